#pragma once

#include <QDialog>
#include <QStringList>

#include <memory>

namespace Ui {
class SortChoice;
}

namespace tessaro {

/// By which column of values the rows are sorted, and which way.
struct ColumnSort {
    int column = 0; ///< from 0
    bool ascending = true;
};

/// Asks for it, among the heads of the columns.
class SortChoice final : public QDialog {
    Q_OBJECT

  public:
    SortChoice(const QStringList& heads, const ColumnSort& order, QWidget* parent = nullptr);
    ~SortChoice() override;

    [[nodiscard]] ColumnSort Order() const;

  private:
    std::unique_ptr<Ui::SortChoice> ui_;
};

} // namespace tessaro
