#pragma once

#include "map/MapData.h"
#include "map/classes/ClassTable.h"

#include <QStringList>
#include <QWidget>

#include <memory>

namespace Ui {
class ClassesPage;
}

namespace tessaro {

class BreakHistogram;

/// The page of a map's classes: method, range and decimals, the spread of the values with the bounds in it, the grid of
/// classes, and their colours. It works on `_MapData` as Get_Data filled it.
class ClassesPage final : public QWidget {
    Q_OBJECT

  public:
    explicit ClassesPage(QWidget* parent = nullptr);
    ~ClassesPage() override;

    /// Takes up new data: decimals and range come from the values, and classes are made by the chosen method. The first
    /// time the user's Default.plf gives the colours, if there is one.
    void Start(ThemeKind kind, int featuresOfTheme, int unreadable);
    /// Takes up other values of the same theme and keeps the classes: they are counted anew, and the first and the last
    /// of them are widened to hold `ends`.
    void KeepClasses(int featuresOfTheme, int unreadable, const ValueLimits& ends);
    [[nodiscard]] const ClassTable& Table() const { return table_; }
    /// Shows classes and looks that were made elsewhere.
    void SetTable(const ClassTable& table);
    [[nodiscard]] BreakChoice Choice() const;
    void SetFormCaptions();

    void cmdApply_Click();
    void cmdSmoothColors_Click();
    void SSCmdSavePalette_Click();
    void SSCmdLoadPalette_Click();

    /// Where palettes are looked for: Palettes in the application folder, or the user's place for it.
    [[nodiscard]] static QString PaletteFolder();

  public Q_SLOTS:
    /// Lights up a row of the grid, such as that of the area under the pointer; numbered as in RowHovered.
    void ShowRowOf(int row);

  Q_SIGNALS:
    void Changed(); ///< classes or looks are others now
    /// The row under the pointer: classes from 0, missing data one behind the empty row that follows them; -1 for none.
    void RowHovered(int row);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void TakeValues(int featuresOfTheme, int unreadable);
    void ConnectControls();
    void FillChoices();
    void FillSchemes();
    [[nodiscard]] bool ReadRange(ClassRequest& request);
    void ShowLimits(int decimals);
    void ShowTyped(double minimum, double maximum, int decimals);
    void ComputeTable(const ClassRequest& request);
    void RememberFields();
    void EnableApply();
    void ShowAll();
    void ShowGrid();
    void ShowRow(int row);
    void ShowMissing();
    void PaintLitRow();
    void Hover(int row);
    void ShowHistogram();
    void ShowNotes();
    void ChoiceChanged();
    void CellChosen(int row, int column);
    void EditBoundCell(int row, int column);
    void EditLook(int row, int column);
    void MoveBound(int row, double value);
    void UseScheme(int index);
    [[nodiscard]] ClassLook* LookOfRow(int row);
    [[nodiscard]] bool HasLook(int row) const;
    [[nodiscard]] static QString CaptionOfColor(int row);
    [[nodiscard]] QPoint BesideCell(int row, int column) const;

    std::unique_ptr<Ui::ClassesPage> ui_;
    BreakHistogram* histogram_;
    ClassTable table_;
    std::vector<double> values_;
    ValueLimits limits_;
    QStringList limitTexts_; ///< what the fields of the range show for the data's own limits
    QStringList applied_;    ///< what the fields held when classes were last made
    int features_ = 0;
    int unreadable_ = 0;
    int hovered_ = -1;
    int lit_ = -1; ///< the row that is lit up
    bool firstPass_ = true;
};

} // namespace tessaro
