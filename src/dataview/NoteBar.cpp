#include "dataview/NoteBar.h"

#include "controls/Captions.h"
#include "controls/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace tessaro {

NoteBar::NoteBar(QWidget* parent) : QFrame(parent), lblNote_(new QLabel(this)), cmdNote_(new QPushButton(this)) {
    setFrameShape(QFrame::NoFrame);
    setAutoFillBackground(true);
    lblNote_->setObjectName(QStringLiteral("lblNote"));
    lblNote_->setTextFormat(Qt::PlainText);
    lblNote_->setWordWrap(true);
    cmdNote_->setObjectName(QStringLiteral("cmdNote"));
    cmdNote_->setAutoDefault(false);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(2 * theme::kGrid, theme::kGrid, 2 * theme::kGrid, theme::kGrid);
    row->setSpacing(2 * theme::kGrid);
    row->addWidget(lblNote_, 1);
    row->addWidget(cmdNote_);
    connect(cmdNote_, &QPushButton::clicked, this, &NoteBar::Pressed);
    hide();
}

void NoteBar::Say(const QString& text, const QString& buttonKey) {
    QPalette raised = palette();
    raised.setColor(QPalette::Window, theme::SurfaceRaised());
    setPalette(raised);
    lblNote_->setText(text);
    lblNote_->setAccessibleName(text);
    if (!buttonKey.isEmpty()) SetCaption(cmdNote_, buttonKey);
    cmdNote_->setVisible(!buttonKey.isEmpty());
    setVisible(!text.isEmpty());
}

QString NoteBar::Text() const {
    return lblNote_->text();
}

} // namespace tessaro
