#pragma once

#include <QStringList>
#include <QTableWidget>

namespace tessaro {

/// A grid of a few columns in which one is typed into: F2, a double click or typing opens a cell, Return goes on to the
/// next row, and Tab leaves the grid.
class FillGrid : public QTableWidget {
    Q_OBJECT

  public:
    explicit FillGrid(QWidget* parent = nullptr);

    /// The columns' heads; the first column takes what room is left.
    void SetHeads(const QStringList& heads);
    /// A text that can be read only; the whole of it is its tip.
    void SetLabel(int row, int column, const QString& text);
    /// A text to be typed into.
    void SetField(int row, int column, const QString& text);
    /// What a cell holds now, also while it is typed into.
    [[nodiscard]] QString TextOf(int row, int column) const;
    /// Closes the cell that is typed into, keeping its text.
    void EndTyping();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace tessaro
