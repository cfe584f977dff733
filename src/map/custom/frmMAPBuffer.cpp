#include "map/custom/frmMAPBuffer.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "map/custom/Buffers.h"
#include "session/DisplayValue.h"
#include "session/Messages.h"
#include "ui_frmMAPBuffer.h"

#include <QLineEdit>

namespace tessaro {

namespace {

constexpr int kFirstRadius = 50;
constexpr int kRadiusStep = 5;

} // namespace

frmMAPBuffer::frmMAPBuffer(const QString& layerName, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmMAPBuffer>()) {
    ui_->setupUi(this);
    SetFormFonts(this);
    setWindowTitle(FilledText(QStringLiteral("TS_BufferTitle"), {layerName}));
    SetCaption(ui_->lblDescription, QStringLiteral("Buffer Description"));
    SetCaption(ui_->lblRadius, QStringLiteral("TS_BufferRadius"));
    SetCaption(ui_->lblKM, QStringLiteral("TS_Kilometers"));
    SetCaption(ui_->lblScale, QStringLiteral("TS_BufferScale"));
    SetCaption(ui_->cmdBufferOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->cmdBufferCancel, QStringLiteral("CANCEL BUTTON"));
    ui_->UpDownLineSize->SetSteps(kLeastRadius, kMostRadius, kRadiusStep);
    ui_->lblRadius->setBuddy(ui_->UpDownLineSize);
    QLineEdit& txtBufferRadius = ui_->UpDownLineSize->Field();
    txtBufferRadius.setObjectName(QStringLiteral("txtBufferRadius"));
    txtBufferRadius.setAccessibleName(ui_->lblRadius->accessibleName());
    txtBufferRadius.setText(DisplayedValue(QString::number(kFirstRadius)));
    txtBufferRadius.selectAll();
    QPalette muted = ui_->lblScale->palette();
    muted.setColor(QPalette::WindowText, theme::MutedText());
    ui_->lblScale->setPalette(muted);
    connect(ui_->cmdBufferOK, &QPushButton::clicked, this, &frmMAPBuffer::cmdBufferOK_Click);
    connect(ui_->cmdBufferCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmMAPBuffer::~frmMAPBuffer() = default;

void frmMAPBuffer::cmdBufferOK_Click() {
    QLineEdit& field = ui_->UpDownLineSize->Field();
    const TypedRadius typed = CheckRadius(field.text());
    if (typed.message == nullptr) {
        radius_ = typed.radius;
        return accept();
    }
    ShowMessage(QLatin1String(typed.message));
    if (typed.radius > 0) field.setText(DisplayedValue(QString::number(static_cast<int>(typed.radius))));
    ui_->UpDownLineSize->setFocus();
    field.selectAll();
}

} // namespace tessaro
