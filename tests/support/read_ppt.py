"""Prints what an independent reader finds in a ".ppt" file, as one JSON object: the size of a slide, and of each slide
the places of its pictures (left, top, right, bottom), all in 1/576 inch. Ends with status 1 when the file is no good.
"""
import io
import json
import struct
import sys

import xlrd.compdoc

DOCUMENT_ATOM, SLIDE = 0x03E9, 0x03EE
SHAPE, SHAPE_ATOM, CLIENT_ANCHOR = 0xF004, 0xF00A, 0xF010
PICTURE_FRAME = 75


def records(data, start, end):
    """(type, instance, start of contents, end of contents) of the records of a container, in order."""
    while start + 8 <= end:
        version, kind, length = struct.unpack_from("<HHI", data, start)
        if start + 8 + length > end:
            raise ValueError("record 0x%04X at %d is longer than its container" % (kind, start))
        yield kind, version >> 4, version & 0xF == 0xF, start + 8, start + 8 + length
        start += 8 + length


def every(data, start, end):
    """The records of a container and of all containers in it."""
    for kind, instance, container, begin, stop in records(data, start, end):
        yield kind, instance, begin, stop
        if container:
            yield from every(data, begin, stop)


def pictures(data, start, end):
    places = []
    for kind, _, begin, stop in every(data, start, end):
        if kind != SHAPE:
            continue
        parts = list(records(data, begin, stop))
        if any(part[0] == SHAPE_ATOM and part[1] == PICTURE_FRAME for part in parts):
            for part in parts:
                if part[0] == CLIENT_ANCHOR:
                    top, left, right, bottom = struct.unpack_from("<hhhh", data, part[3])
                    places.append([left, top, right, bottom])
    return places


def main(path):
    with open(path, "rb") as file:
        contents = file.read()
    compound = xlrd.compdoc.CompDoc(contents, logfile=io.StringIO())
    data = compound.get_named_stream("PowerPoint Document")
    if data is None:
        raise ValueError("no presentation in it")
    slides, size = [], None
    for kind, _, begin, stop in every(data, 0, len(data)):
        if kind == DOCUMENT_ATOM:
            size = struct.unpack_from("<ii", data, begin)
    for kind, _, _, begin, stop in records(data, 0, len(data)):
        if kind == SLIDE:
            slides.append(pictures(data, begin, stop))
    json.dump({"size": size, "slides": slides}, sys.stdout)


try:
    main(sys.argv[1])
except Exception as error:  # whatever it is, the file is no good
    sys.exit("%s: %s" % (sys.argv[1], error))
