#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "map/classes/ClassesPage.h"
#include "map/custom/RenderLabels.h"
#include "map/custom/frmMAPAdvLbl.h"
#include "map/custom/frmMAPCustomize.h"
#include "map/custom/frmMapLabels.h"
#include "map/wizard/LayerDrafts.h"
#include "map/wizard/MapCustomizePage.h"
#include "map/wizard/MapPane.h"
#include "map/wizard/MapTexts.h"
#include "map/wizard/MapThemePage.h"
#include "map/wizard/PeriodSlider.h"
#include "map/wizard/ThemeSymbols.h"
#include "map/wizard/frmMAPIdentify.h"
#include "map/wizard/frmMapWizard.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"

namespace tessaro {

namespace {

constexpr double kReach = 5;          ///< pixels around the pointer in which a small island is found
constexpr double kIdentifyReach = 50; ///< the same around a place that is to be identified
constexpr int kLargestPoint = 20;     ///< pixels, of the top class

} // namespace

void frmMapWizard::ConnectMap() {
    connect(pane_, &MapPane::IdentifyRequested, this, &frmMapWizard::Identify);
    connect(pane_, &MapPane::LabelsRequested, this, &frmMapWizard::ChooseLabels);
    connect(pane_, &MapPane::AdviceTaken, this, &frmMapWizard::TakeAdvice);
    connect(&pane_->Map(), &MapCanvas::Hovered, this, &frmMapWizard::ShowPointed);
    connect(&pane_->Map(), &MapCanvas::HoverEnded, this, &frmMapWizard::ShowNothingPointed);
    connect(&pane_->Periods(), &PeriodSlider::PeriodChosen, this, &frmMapWizard::ShowPeriod);
    connect(&pane_->Periods(), &PeriodSlider::SameClassesChosen, this,
            [this](bool same) { draft_.sameClasses = same; });
    connect(identify_.get(), &frmMAPIdentify::FeatureShown, this,
            [this](int layer, int feature) { pane_->Map().Highlight(layer, feature); });
}

void frmMapWizard::ClassesChanged() {
    draft_.classes = classes_->Table();
    draft_.choice = classes_->Choice();
    dataSaved_ = false;
    theme_.Colour();
    pane_->Map().Refresh();
}

void frmMapWizard::ShowPeriod(const QString& period) {
    const ErrorTrap trap("ShowPeriod");
    const WaitPointer wait;
    if (!theme_.ShowPeriod(period)) return;
    const int features = FeaturesOfTheme(pane_->Map().Layers());
    if (draft_.sameClasses)
        classes_->KeepClasses(features, theme_.UnreadableValues(), LimitsOf(draft_.theme));
    else
        classes_->Start(theme_.Kind(), features, theme_.UnreadableValues());
    themePage_->ShowTheme(draft_.theme, theme_.Areas());
    identify_->Forget();
    // What was saved with the values went with them.
    if (Step() >= CustomizeStep) dataSaved_ = SaveData(draft_.classes);
    ShowLabels();
    customize_->ShowDraft();
}

/// Totals as colours of areas mislead, as sized points they don't.
void frmMapWizard::ShowAdvice() {
    const bool points = theme_.ShownAsPoints();
    const bool total =
        theme_.Kind() == ThemeKind::Polygons && theme_.HasPoints() && LooksLikeTotal(draft_.theme, theme_.Areas());
    const char* text = points ? "TS_ShownAsPoints" : "TS_TotalAsColors";
    const char* button = points ? "TS_ShowAsColors" : "TS_ShowAsPoints";
    if (points || total)
        pane_->ShowAdvice(GetText(QLatin1String(text)), PlainText(QLatin1String(button)));
    else
        pane_->ShowAdvice({}, {});
}

void frmMapWizard::TakeAdvice() {
    const ErrorTrap trap("cmdAdvice_Click");
    const WaitPointer wait;
    const bool points = !theme_.ShownAsPoints();
    identify_->Forget();
    pane_->Map().Outline({});
    theme_.ShowAsPoints(points);
    ClassTable table = classes_->Table();
    table.kind = theme_.Kind();
    if (points) {
        looksOfAreas_ = table;
        SizeByClass(table, kLargestPoint);
    } else {
        const std::vector<ClassLook>& looks = looksOfAreas_.looks;
        for (std::size_t row = 0; row < table.looks.size() && !looks.empty(); ++row)
            table.looks[row].color = looks[std::min(row, looks.size() - 1)].color;
        table.missing = looksOfAreas_.missing;
    }
    classes_->SetTable(table);
    if (Step() >= CustomizeStep) dataSaved_ = SaveData(draft_.classes);
    ShowLabels();
    LayersChanged();
    ShowAdvice();
}

void frmMapWizard::ShowPointed(const QPointF& map) {
    const ThemeMap::Place place = theme_.FeatureAt(map, pane_->Map().ToMapDistance(kReach));
    if (place.layer < 0) return ShowNothingPointed();
    const MapArea* area = theme_.AreaOf(place);
    const QString value = area ? ValueText(*area, theme_.Areas().PeriodsDiffer()) : draft_.classes.missing.legend;
    pane_->ShowPointed(
        InReadingOrder(FilledText(QStringLiteral("TS_LabelledLine"), {theme_.NameOf(place), InOnePiece(value)})));
    pane_->Map().Highlight(place.layer, place.feature);
    classes_->ShowRowOf(RowOfFeature(pane_->Map().Layers().At(place.layer).symbols, place.feature));
}

void frmMapWizard::ShowNothingPointed() {
    pane_->ShowPointed({});
    classes_->ShowRowOf(-1);
    pane_->Map().Outline({});
}

/// `row` as in the grid of classes.
void frmMapWizard::OutlineClass(int row) {
    const LayerStack& map = pane_->Map().Layers();
    std::vector<std::vector<int>> features(static_cast<std::size_t>(map.Count()));
    for (int i = 0; row >= 0 && i < map.Count(); ++i)
        if (IsOfTheme(map.At(i))) features[static_cast<std::size_t>(i)] = FeaturesOfRow(map.At(i).symbols, row);
    pane_->Map().Outline(std::move(features));
}

void frmMapWizard::Identify(const QPointF& map) {
    const ErrorTrap trap("Identify");
    const LayerStack& layers = pane_->Map().Layers();
    identify_->show();
    identify_->raise();
    identify_->Show(layers, NameOf(draft_.theme), map,
                    FeaturesNear(layers, map, pane_->Map().ToMapDistance(kIdentifyReach)));
}

/// The labels of the theme's layers as the page has them.
void frmMapWizard::LabelsChosen() {
    ApplyLabels(draft_.layers, pane_->Map().Layers());
    ShowLabels();
}

void frmMapWizard::ShowLabels() {
    RenderLabels(pane_->Map().Layers(), draft_.labelFormula);
    pane_->Map().Refresh();
}

void frmMapWizard::CombineLabels() {
    frmMAPAdvLbl form(draft_.labelFormula, this);
    if (ShowDialog(form) != QDialog::Accepted) return;
    draft_.labelFormula = form.Formula();
    ShowLabels();
    customize_->ShowDraft();
}

void frmMapWizard::ChooseLabels() {
    const LayerStack& map = pane_->Map().Layers();
    int layer = map.Count() - 1;
    while (layer >= 0 && !IsOfTheme(map.At(layer)))
        --layer;
    if (layer < 0) return;
    frmMapLabels form(pane_->Map().Layers(), layer, draft_.labelFormula, this);
    if (ShowDialog(form) != QDialog::Accepted) return;
    pane_->Map().Refresh();
    LayersChanged();
}

void frmMapWizard::SSCmdCustomize_Click() {
    const ErrorTrap trap("SSCmdCustomize_Click");
    identify_->Forget();
    pane_->Map().Outline({});
    frmMAPCustomize form(
        pane_->Map().Layers(), draft_.labelFormula, [this] { pane_->Map().Refresh(); }, this);
    ShowDialog(form);
    identify_->Forget();
    theme_.Colour();
    ShowLabels();
    LayersChanged();
}

} // namespace tessaro
