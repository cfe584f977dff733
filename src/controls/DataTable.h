#pragma once

#include "office/Limits.h"

#include <QString>
#include <QTableView>

#include <vector>

namespace tessaro {

/// A grid of data: rows of one height, a head that stays, row numbers, cells chosen freely and copied as tab-separated
/// text. Made for models of millions of rows.
class DataTable : public QTableView {
    Q_OBJECT

  public:
    /// Most rows that go to the clipboard at once: a full sheet of the .xls kind, and a wait of seconds at most.
    static constexpr int kMostCopiedRows = office::kMaxRows;

    explicit DataTable(QWidget* parent = nullptr);

    /// Text in the middle of the grid while it has no rows: what to do next.
    void SetHint(const QString& hint);
    /// Sets the heights of rows and head again, after a change of font.
    void FitToFont();
    /// The width that the texts of a column need, and its weight when not all columns fit (see ColumnWish).
    struct Wish {
        int text = 0; ///< width of its widest text
        double weight = 1;
        int least = 0;          ///< width of text that must not be cut
        bool takesRest = false; ///< room that no text asks for goes here; otherwise to the last column
    };
    /// Shares the width of the grid among the first columns, now and whenever it changes, until the user drags a
    /// column.
    void SetColumnWishes(std::vector<Wish> wishes);
    /// The chosen cells, tab between cells and line feed between rows. Cells not chosen in between are empty, hidden
    /// columns are left out.
    [[nodiscard]] QString SelectionAsText() const;
    /// Puts SelectionAsText into the clipboard; nothing when no cell is chosen.
    void Copy();
    /// First and last row that are wholly in view; -1 when there is none.
    [[nodiscard]] int FirstVisibleRow() const;
    [[nodiscard]] int LastVisibleRow() const;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ShareWidth();

    QString hint_;
    std::vector<Wish> wishes_;
    bool widthsAreTheUsers_ = false; ///< a column was dragged
    bool sharing_ = false;
};

} // namespace tessaro
