#include "shell/frmSplash.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "platform/Paths.h"
#include "session/Addresses.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "shell/Documents.h"
#include "shell/Navigation.h"
#include "ui_frmSplash.h"

#include <QApplication>
#include <QScopedValueRollback>
#include <QShortcut>

#include <array>

namespace tessaro {

namespace {

/// A text of the page: the head of a column or a link. A link that is not `ready` belongs to a part still to come.
struct HomeLink {
    const char* name;
    const char* key;
    bool head;
    bool ready;
};
constexpr std::array<HomeLink, 12> kLinks{{
    {"lbl_FP_IFO_0", "Home Information", true, true},
    {"lbl_FP_IFO_1", "Organization name", false, true},
    {"lbl_FP_IFO_2", "PRODUCT NAME", false, true},
    {"lbl_FP_Data_0", "DATA OPTION", true, true},
    {"lbl_FP_Data_1", "TLB_SEARCH", false, true},
    {"lbl_FP_GALL_0", "FP_LBL_GALL_CAPTION", true, true},
    {"lbl_FP_GALL_1", "Present", false, true},
    {"lbl_FP_GALL_2", "FP_LBL_GALL_OPTION3_CAPTION", false, true},
    {"lbl_FP_HELP_0", "FP_LBL_HELP_CAPTION", true, true},
    {"lbl_FP_HELP_1", "FP_LBL_HELP_OPTION1_CAPTION", false, true},
    {"lbl_FP_HELP_2", "mnu_Help_Tour", false, true},
    {"lbl_FP_HELP_3", "mnu_Help_Helpdesk", false, true},
}};

/// The font size of this page; that of the preferences does not count here.
constexpr int kFontSize = 12;

void SetGround(QWidget* strip, const char* setting, const QColor& inTheDark) {
    const QColor color = SettingColor(QLatin1String(setting));
    QPalette palette = QApplication::palette();
    // The colours of the settings are made for the light theme.
    palette.setColor(QPalette::Window, theme::IsDark() || !color.isValid() ? inTheDark : color);
    strip->setPalette(palette);
}

void SetTextColor(QWidget* label, const QColor& color) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, color);
    label->setPalette(palette);
}

QFont Scaled(double factor, bool bold) {
    QFont font = LanguageFont();
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(bold);
    return font;
}

/// "Tessaro World" of an address or path.
QString NameOfDatabase(const QString& address) {
    const QString file = FileNameOf(address);
    return file.endsWith(QLatin1String(".mdb"), Qt::CaseInsensitive) ? file.chopped(4) : file;
}

} // namespace

frmSplash::frmSplash(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::frmSplash>()) {
    const ErrorTrap trap("frmSplash_Load");
    ui_->setupUi(this);
    LoadPictures();
    MakeLinks();
    ui_->picShowOnStartup->setVisible(true);
    ui_->chkShowOnStartup->setVisible(SettingFlag(QStringLiteral("SHOW ON STARTUP OPTION")));
    ui_->chkShowOnStartup->setChecked(!SkipTheSplash);
    connect(ui_->chkShowOnStartup, &QCheckBox::toggled, this, [](bool ticked) { SkipTheSplash = !ticked; });
    connect(ui_->lstDatabases, &DatabaseList::Chosen, this, [this](const QString& address) {
        if (IsOpenDatabase(address))
            Q_EMIT StageChosen(0);
        else
            Q_EMIT DatabaseChosen(address);
    });
    connect(ui_->cmdOpenAnother, &QAbstractButton::clicked, this, &frmSplash::OtherDatabaseChosen);
    SetFormCaptions();
}

frmSplash::~frmSplash() = default;

void frmSplash::LoadPictures() {
    ui_->picSplashTop->SetColor(SettingColor(QStringLiteral("SPLASH TOP COLOR")));
    const bool animated = !Setting(QStringLiteral("SPLASH SWF IMAGE")).trimmed().isEmpty();
    ui_->picSplashTop->SetPicture(animated ? PictureFile(QStringLiteral("Flash/Home.swf")) : QString());
    SetGround(ui_->PicContainer, "SPLASH MIDDLE COLOR", QApplication::palette().color(QPalette::Window));
    SetGround(ui_->picShowOnStartup, "SPLASH BOTTOM COLOR", theme::SurfaceRaised());
    const int size = 12 * theme::kGrid;
    ui_->picProduct_Image->setPixmap(theme::Icon(Setting(QStringLiteral("PRODUCT IMAGE"))).pixmap(size, size));
    for (int stage = 0; stage < navigation::kStageCount; ++stage) {
        auto* button = findChild<PictureButton*>(QStringLiteral("picIndicators_%1").arg(stage));
        button->SetNumber(stage + 1);
        button->setIcon(theme::Icon(Setting(QStringLiteral("SPLASH INDICATOR %1").arg(stage + 1))));
        // A separate object, because setText() of a button clears the button's own shortcut.
        auto* key = new QShortcut(QKeySequence(QStringLiteral("Ctrl+%1").arg(stage + 1)), this);
        connect(key, &QShortcut::activated, button, &QAbstractButton::click);
        connect(button, &QAbstractButton::clicked, this, [this, stage] { Q_EMIT StageChosen(stage); });
    }
    const QString bottom = Setting(QStringLiteral("Product Image Bottom2")).trimmed();
    const bool linked = SettingFlag(QStringLiteral("Show Product Image Bottom2 Link"));
    ui_->picProduct_Image_1->setVisible(!bottom.isEmpty());
    ui_->picProduct_Image_1->setIcon(theme::Icon(bottom));
    ui_->picProduct_Image_1->setIconSize({20 * theme::kGrid, 4 * theme::kGrid});
    ui_->picProduct_Image_1->setEnabled(linked);
    if (linked) ui_->picProduct_Image_1->setCursor(Qt::PointingHandCursor);
    connect(ui_->picProduct_Image_1, &QAbstractButton::clicked, this, [] {
        OpenDocument(QStringLiteral("Home Page Bottom Info Folder"), QStringLiteral("Home Page Bottom Info File"),
                     QStringLiteral(".htm"));
    });
}

void frmSplash::MakeLinks() {
    for (const HomeLink& row : kLinks) {
        if (row.head) continue;
        const QString name = QLatin1String(row.name);
        auto* link = findChild<LinkButton*>(name);
        link->setEnabled(row.ready && (name != QLatin1String("lbl_FP_HELP_3") || HasHelpLink(3)));
        connect(link, &QAbstractButton::clicked, this, [this, name] { OpenLink(name); });
    }
}

void frmSplash::OpenLink(const QString& name) {
    const QString htm = QStringLiteral(".htm");
    if (name == QLatin1String("lbl_FP_IFO_1"))
        OpenDocument(QStringLiteral("Organization Info Folder"), QStringLiteral("Organization Info File"), htm);
    else if (name == QLatin1String("lbl_FP_IFO_2"))
        OpenDocument(QStringLiteral("Product Info Folder"), QStringLiteral("Product Info File"), htm);
    else if (name == QLatin1String("lbl_FP_Data_1"))
        Q_EMIT DataChosen();
    else if (name == QLatin1String("lbl_FP_GALL_1"))
        Q_EMIT GalleryChosen(0);
    else if (name == QLatin1String("lbl_FP_GALL_2"))
        Q_EMIT GalleryChosen(2);
    else if (name.startsWith(QLatin1String("lbl_FP_HELP_")))
        // Links 1, 2 and 3 are entries 0, 2 and 3 of the Help menu.
        ShowHelpFileLinks(name.endsWith(QLatin1Char('1')) ? 0 : name.right(1).toInt());
}

void frmSplash::SetFormCaptions() {
    const QScopedValueRollback size(ProductFontSize, kFontSize);
    SetFormFonts(this);
    for (const HomeLink& row : kLinks) {
        const QString name = QLatin1String(row.name);
        const QString text = PlainText(QLatin1String(row.key));
        if (row.head) {
            findChild<QLabel*>(name)->setText(text);
            continue;
        }
        auto* link = findChild<LinkButton*>(name);
        link->setText(text);
        link->setAccessibleName(text);
        const char* whyNot = !row.ready ? "TS_NotYetAvailable" : link->isEnabled() ? "" : "TS_WhyNoHelpDesk";
        link->setToolTip(PlainText(QLatin1String(whyNot)));
    }
    for (int stage = 0; stage < navigation::kStageCount; ++stage) {
        auto* button = findChild<PictureButton*>(QStringLiteral("picIndicators_%1").arg(stage));
        button->setText(PlainText(QLatin1String(navigation::Stages.at(static_cast<std::size_t>(stage)).captionKey)));
        button->setAccessibleName(button->text());
    }
    SetCaption(ui_->lblDatabases, QStringLiteral("TS_Databases"));
    ui_->lstDatabases->setAccessibleName(PlainText(QStringLiteral("TS_Databases")));
    ui_->lstDatabases->SetHint(PlainText(QStringLiteral("TS_NoDatabasesFound")));
    ui_->cmdOpenAnother->setText(PlainText(QStringLiteral("TS_OpenAnotherDatabase")));
    ui_->cmdOpenAnother->setAccessibleName(ui_->cmdOpenAnother->text());
    SetCaption(ui_->chkShowOnStartup, QStringLiteral("SHOW ON STARTUP"));
    ui_->picProduct_Image_1->setAccessibleName(PlainText(QStringLiteral("Home Information")));
    SetToolTip(ui_->picProduct_Image_1, QStringLiteral("Home Information"));
    SetThePropertiesFPLables();
    ShowWelcome();
}

/// Fonts and colours of the texts.
void frmSplash::SetThePropertiesFPLables() {
    const QColor head = theme::IsDark() ? theme::Accent() : SettingColor(QStringLiteral("FP_LBL_HEADER_PROP_COLOR"));
    const QColor hot = SettingColor(QStringLiteral("FP_LBL_OPTIONS_PROP_COLOR"));
    const auto links = findChildren<LinkButton*>();
    for (LinkButton* link : links)
        link->SetHotColor(hot);
    for (const HomeLink& row : kLinks)
        if (row.head) {
            auto* label = findChild<QLabel*>(QLatin1String(row.name));
            label->setFont(Scaled(1.1, true));
            SetTextColor(label, head);
            label->setContentsMargins(0, 0, 0, theme::kGrid / 2);
        }
    ui_->lblDatabases->setFont(Scaled(1.1, true));
    SetTextColor(ui_->lblDatabases, head);
    ui_->lblProduct->setFont(Scaled(3.2, true));
    ui_->lblWelcome->setFont(Scaled(1.3, false));
    // Latin names are aligned like the rest of the page in right-to-left languages.
    const bool mirrored = LanguageIsRightToLeft();
    for (QLabel* label : {ui_->lblProduct, ui_->lblWelcome})
        label->setAlignment((mirrored ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute | Qt::AlignVCenter);
    SetTextColor(ui_->lblProduct, Qt::white);
    SetTextColor(ui_->lblWelcome, QColor(0xd7, 0xee, 0xf2));
    const auto buttons = findChildren<PictureButton*>();
    for (PictureButton* button : buttons)
        button->setFont(Scaled(1.1, false));
}

void frmSplash::ShowWelcome() {
    ui_->lblProduct->setText(Setting(QStringLiteral("PRODUCT NAME")));
    const bool open = !current_.isEmpty() && !IsNoDatabase(current_) && DatabaseOpen;
    ui_->lblWelcome->setText(
        open ? PlainText(QStringLiteral("TS_CurrentDatabase")).replace(QLatin1String("%1"), NameOfDatabase(current_))
             : PlainText(QStringLiteral("TS_WelcomeChooseDatabase")));
}

bool frmSplash::IsOpenDatabase(const QString& address) const {
    return DatabaseOpen && LanguageInDatabase && address.compare(current_, Qt::CaseInsensitive) == 0;
}

void frmSplash::ShowDatabases(const QStringList& addresses, const QString& current) {
    current_ = current;
    DatabaseList& list = *ui_->lstDatabases;
    list.clear();
    for (const QString& address : addresses) {
        if (IsNoDatabase(address)) continue;
        const bool open = IsOpenDatabase(address);
        auto* item = new QListWidgetItem(theme::Icon(QStringLiteral("database.png")), NameOfDatabase(address), &list);
        item->setData(Qt::UserRole, address);
        item->setToolTip(address);
        item->setSizeHint({0, list.fontMetrics().height() + 2 * theme::kGrid});
        if (!open) continue;
        QFont bold = list.font();
        bold.setBold(true);
        item->setFont(bold);
        list.setCurrentItem(item);
    }
    ShowWelcome();
}

void frmSplash::Unload() {
    SkipTheSplash = !ui_->chkShowOnStartup->isChecked();
    HomeIsShown = false;
}

} // namespace tessaro
