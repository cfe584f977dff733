#include "metadata/frmShowDetails.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "database/AreaIds.h"
#include "session/Strings.h"
#include "ui_frmShowDetails.h"

#include <QClipboard>
#include <QKeyEvent>
#include <QLocale>

namespace tessaro {

frmShowDetails::frmShowDetails(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmShowDetails>()) {
    ui_->setupUi(this);
    setWindowTitle(PlainText(QStringLiteral("TS_Details")));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    for (QScrollArea* frame : {ui_->frmIndicators, ui_->frmArea}) {
        frame->viewport()->setBackgroundRole(QPalette::Base);
        frame->widget()->setBackgroundRole(QPalette::Base);
        frame->setAccessibleName(windowTitle());
    }
    connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    SetFormFonts(this);
    ui_->cmdOK->setFocus();
}

frmShowDetails::~frmShowDetails() = default;

QLabel* frmShowDetails::AddLabel(const char* name, const QString& text, int row, int column, int columns) {
    auto* label = new QLabel(text, ui_->picIndicators);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setFont(LanguageFont());
    ui_->gridIndicators->addWidget(label, row, column, 1, columns, Qt::AlignTop);
    return label;
}

void frmShowDetails::DisplayINDDetails(const std::vector<metadata::IndicatorDetails>& details) {
    ui_->frmArea->hide();
    ui_->frmIndicators->show();
    const QString sector = PlainText(QStringLiteral("Comm_Sector"));
    const QString className = PlainText(QStringLiteral("Comm_Class"));
    copied_ = {PlainText(QStringLiteral("Comm_Indicator")) + QLatin1Char('\t') + sector + QLatin1Char('\t') +
               className};
    int row = 0;
    for (const metadata::IndicatorDetails& indicator : details) {
        QLabel* name = AddLabel("lblIndicatorName", indicator.indicator, row++, 0, 2);
        QFont bold = name->font();
        bold.setBold(true);
        name->setFont(bold);
        name->setWordWrap(true);
        AddLabel("lblSectors", indicator.sectors.join(QLatin1Char('\n')), row, 0, 1)->setAccessibleName(sector);
        AddLabel("lblClass", indicator.classes.join(QLatin1Char('\n')), row, 1, 1)->setAccessibleName(className);
        ui_->gridIndicators->setRowMinimumHeight(++row, theme::kGrid);
        ++row;
        for (qsizetype place = 0; place < indicator.sectors.size(); ++place)
            copied_ << indicator.indicator + QLatin1Char('\t') + indicator.sectors.at(place) + QLatin1Char('\t') +
                           indicator.classes.at(place);
    }
    if (details.empty()) AddLabel("lblIndicatorName", GetText(QStringLiteral("Not found")), row++, 0, 2);
    ui_->gridIndicators->setRowStretch(row, 1);
}

void frmShowDetails::ShowLines(const QString& title, const QStringList& lines) {
    ui_->frmIndicators->hide();
    ui_->frmArea->show();
    ui_->frmArea->setAccessibleName(title);
    QStringList shown;
    for (const QString& line : lines)
        shown << InReadingOrder(line);
    ui_->lblAreaNames->setText(shown.join(QLatin1Char('\n')));
    resize(440, 240);
}

void frmShowDetails::ShowAreaDetails(const QString& areaId) {
    constexpr int kBlanksPerLevel = 6;
    constexpr int kShownOfLongId = 30;
    copied_.clear();
    QStringList lines;
    int level = 0;
    for (const metadata::AreaLine& area : metadata::AreaChain(areaId)) {
        lines << QString(level++ * kBlanksPerLevel, QLatin1Char(' ')) + area.name + QStringLiteral("  (") +
                     area.areaId + QLatin1Char(')');
        copied_ << area.areaId + QLatin1Char('\t') + area.name;
    }
    if (areaId.size() > schema::kAreaIdWidth)
        lines << GetText(QStringLiteral("TS_AreaIdTooLong")).replace(QLatin1String("%1"), areaId.left(kShownOfLongId));
    else if (lines.isEmpty())
        lines << GetText(QStringLiteral("Not found"));
    ShowLines(PlainText(QStringLiteral("Comm_Area Name")), lines);
}

void frmShowDetails::ShowPeriodDetails(const QString& period, qint64 dataRows) {
    const QString rows =
        GetText(QStringLiteral("TS_RowsTotal")).replace(QLatin1String("%1"), QLocale().toString(dataRows));
    copied_ = {period + QLatin1Char('\t') + QString::number(dataRows)};
    ShowLines(PlainText(QStringLiteral("Comm_Time")), {period, rows});
}

void frmShowDetails::keyPressEvent(QKeyEvent* event) {
    if (!event->matches(QKeySequence::Copy)) return QDialog::keyPressEvent(event);
    QApplication::clipboard()->setText(copied_.join(QLatin1Char('\n')));
    event->accept();
}

} // namespace tessaro
