#!/usr/bin/env python3
"""Prints what an .xls file holds, as a reader that has nothing to do with the program that wrote it sees it.

read_xls.py FILE: one line of JSON per sheet: name, rows of cells, looks of chosen cells, notes, merged ranges, rich runs.
"""
import json
import sys

import xlrd


def colour(book, index):
    rgb = book.colour_map.get(index)
    return None if rgb is None else "%02X%02X%02X" % rgb


def look(book, sheet, row, column):
    form = book.xf_list[sheet.cell_xf_index(row, column)]
    font = book.font_list[form.font_index]
    back = form.background.pattern_colour_index if form.background.fill_pattern else None
    return {
        "font": font.name,
        "size": font.height / 20,
        "bold": font.weight >= 600,
        "italic": bool(font.italic),
        "colour": colour(book, font.colour_index),
        "back": colour(book, back) if back is not None else None,
        "align": form.alignment.hor_align,
        "format": book.format_map[form.format_key].format_str,
        "borders": [form.border.left_line_style, form.border.top_line_style, form.border.right_line_style,
                    form.border.bottom_line_style],
    }


def value(cell):
    if cell.ctype in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK):
        return None
    return bool(cell.value) if cell.ctype == xlrd.XL_CELL_BOOLEAN else cell.value


def main():
    book = xlrd.open_workbook(sys.argv[1], formatting_info=True)
    for sheet in book.sheets():
        rows = [[value(cell) for cell in sheet.row(row)] for row in range(sheet.nrows)]
        filled = [(r, c) for r in range(min(sheet.nrows, 60)) for c in range(sheet.ncols)
                  if c < len(sheet.row(r)) and sheet.cell_type(r, c) not in (0, 6)]
        print(json.dumps({
            "name": sheet.name,
            "rows": rows,
            "looks": {"%d,%d" % (r + 1, c + 1): look(book, sheet, r, c) for r, c in filled},
            "notes": {"%d,%d" % (r + 1, c + 1): note.text for (r, c), note in sheet.cell_note_map.items()},
            "merged": [[r1 + 1, c1 + 1, r2, c2] for r1, r2, c1, c2 in sheet.merged_cells],
            "runs": {"%d,%d" % (r + 1, c + 1): len(runs) for (r, c), runs in sheet.rich_text_runlist_map.items()},
            "frozen": [sheet.horz_split_pos, sheet.vert_split_pos],
            "gridLines": bool(sheet.show_grid_lines),
            "rightToLeft": bool(sheet.columns_from_right_to_left),
        }))


main()
