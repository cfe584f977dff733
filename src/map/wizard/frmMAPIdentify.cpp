#include "map/wizard/frmMAPIdentify.h"

#include "controls/Captions.h"
#include "controls/EmptyHint.h"
#include "session/Messages.h"
#include "ui_frmMAPIdentify.h"

#include <QSignalBlocker>

namespace tessaro {

frmMAPIdentify::frmMAPIdentify(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmMAPIdentify>()) {
    ui_->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("Identity Feature")));
    SetCaption(ui_->lblLayer, QStringLiteral("Layer Name"));
    SetCaption(ui_->lblAttributes, QStringLiteral("Custom Attributes"));
    ui_->lblLayer->setBuddy(ui_->cboIDList);
    ui_->lblAttributes->setBuddy(ui_->lstFeatList);
    ui_->cboIDList->setAccessibleName(ui_->lblLayer->accessibleName());
    ui_->lstFeatList->setAccessibleName(ui_->lblAttributes->accessibleName());
    ShowWhenEmpty(ui_->lstFeatList, PlainText(QStringLiteral("TS_NothingIdentified")));
    connect(ui_->cboIDList, &QComboBox::currentIndexChanged, this, &frmMAPIdentify::ShowFeature);
}

frmMAPIdentify::~frmMAPIdentify() = default;

void frmMAPIdentify::Show(const LayerStack& map, const QString& theme, QPointF place,
                          std::vector<IdentifiedFeature> found) {
    map_ = &map;
    found_ = std::move(found);
    ui_->lblTheme->setText(InReadingOrder(theme));
    ui_->lblAreaID->setText(FilledText(QStringLiteral("TS_LabelledLine"),
                                       {PlainText(QStringLiteral("TS_MapPlace")), InOnePiece(PlaceText(place))}));
    {
        const QSignalBlocker quiet(ui_->cboIDList);
        ui_->cboIDList->clear();
        for (const IdentifiedFeature& each : found_)
            ui_->cboIDList->addItem(map.At(each.layer).data.name);
    }
    ShowFeature(ui_->cboIDList->currentIndex());
}

void frmMAPIdentify::Forget() {
    map_ = nullptr;
    found_.clear();
    const QSignalBlocker quiet(ui_->cboIDList);
    ui_->cboIDList->clear();
    ui_->lstFeatList->clear();
}

void frmMAPIdentify::ShowFeature(int index) {
    ui_->lstFeatList->clear();
    const auto place = static_cast<std::size_t>(index);
    if (!map_ || index < 0 || place >= found_.size()) return Q_EMIT FeatureShown(-1, -1);
    for (const QString& entry : Identify_list(*map_, found_[place]))
        ui_->lstFeatList->addItem(InReadingOrder(entry));
    Q_EMIT FeatureShown(found_[place].layer, found_[place].feature);
}

} // namespace tessaro
