#pragma once

#include <QString>
#include <QTableView>

namespace tessaro {

/// A grid of data: rows of one height, a head that stays, row numbers, cells chosen freely and copied as tab-separated
/// text. Made for models of millions of rows.
class DataTable final : public QTableView {
    Q_OBJECT

  public:
    /// Most rows that go to the clipboard at once: a full sheet of the .xls kind, and a wait of seconds at most.
    static constexpr int kMostCopiedRows = 65536;

    explicit DataTable(QWidget* parent = nullptr);

    /// Text in the middle of the grid while it has no rows: what to do next.
    void SetHint(const QString& hint);
    /// Heights of rows and head again, after a change of font.
    void FitToFont();
    /// Width of a column for texts of so many characters.
    void SetColumnCharacters(int column, int characters);
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

  private:
    QString hint_;
};

} // namespace tessaro
