#include "shell/frmProperties.h"

#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/Registry.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "ui_frmProperties.h"

#include <QColorDialog>

namespace tessaro {

namespace {

constexpr const char* kStyleKeys[] = {"PROP GENERAL FONT STYLE REGULAR", "PROP GENERAL FONT STYLE ITALICS",
                                      "PROP GENERAL FONT STYLE BOLD", "PROP GENERAL FONT STYLE BOLD ITALICS"};
constexpr const char* kViewKeys[] = {"SECTOR",      "GOAL", "CONCEPTUAL FRAMEWORK", "THEME", "Comm_Source",
                                     "INSTITUTION", "RIGHT"};
constexpr int kFontSizes[] = {8, 9, 10, 11, 12, 14, 16, 18};

QString SoundFolder() {
    return FindPath(JoinPath({AppPath, Setting(QStringLiteral("Sound Folder"))}));
}

} // namespace

PropertyValues PropertyValues::OfSession() {
    PropertyValues values;
    values.language = Language;
    values.font = ProductFont;
    values.fontSize = ProductFontSize;
    values.fontStyle = ProductFontStyle;
    values.collapse = CollapseTreeSelections.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0;
    values.autoSelect = ShowAutoSelectForm;
    values.gridLines = ViewGridLines;
    values.numFormat = SysNumFormat;
    values.footnotes = ShowFootnotes;
    values.showGlobalColor = ShowGlobalColor;
    values.globalColor = GlobalColor;
    values.dataExists = DataExistsMode;
    values.sound = SoundFile;
    values.mute = Mute;
    for (std::size_t view = 0; view < values.views.size(); ++view)
        values.views[view] = IndicatorViews[view].wanted;
    values.openWith = IndicatorOpenWith;
    values.selectBy = IndicatorSelectBy;
    return values;
}

void PropertyValues::PutIntoSession() const {
    CollapseTreeSelections = collapse ? QStringLiteral("True") : QStringLiteral("False");
    ShowAutoSelectForm = autoSelect;
    ViewGridLines = gridLines;
    SysNumFormat = numFormat;
    ShowFootnotes = footnotes;
    ShowGlobalColor = showGlobalColor;
    GlobalColor = globalColor;
    DataExistsMode = dataExists;
    DataExistsCriterion = CriterionOfDataExists(dataExists);
    SoundFile = sound;
    Mute = mute;
    for (std::size_t view = 0; view < views.size(); ++view)
        IndicatorViews[view].wanted = views[view];
    IndicatorOpenWith = openWith;
    IndicatorSelectBy = selectBy;
}

frmProperties::frmProperties(Apply apply, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmProperties>()), apply_(std::move(apply)) {
    ui_->setupUi(this);
    for (const int size : kFontSizes)
        ui_->cmbFontSize->addItem(QString::number(size), size);
    for (const char* key : kStyleKeys)
        ui_->cmbFontStyle->addItem(PlainText(QLatin1String(key)));
    SetFormCaptions();
    LoadControls();
    ConnectControls();
}

frmProperties::~frmProperties() = default;

void frmProperties::SetFormCaptions() {
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("TS_PropertiesCaption")));
    const char* tabs[] = {"PROP GENERAL TAB", "PROP DB TAB", "PROP SOUNDS TAB", "Comm_Indicator"};
    for (int tab = 0; tab < 4; ++tab)
        ui_->SSTab1->setTabText(tab, PlainText(QLatin1String(tabs[tab])));
    SetCaption(ui_->lblLanguage, QStringLiteral("PROP GENERAL LANGUAGE"));
    SetCaption(ui_->lblFont, QStringLiteral("COMM_Font"));
    SetCaption(ui_->lblStyle, QStringLiteral("Style"));
    SetCaption(ui_->lblSize, QStringLiteral("Size"));
    SetCaption(ui_->lblPreview, QStringLiteral("Preview"));
    ui_->lblPreviewText->setText(GetText(QStringLiteral("TS_PropPreviewText")));
    SetCaption(ui_->chkAutoCollapseTreeViewSelection, QStringLiteral("PROP GENERAL AUTOCOLLAPSE"));
    SetCaption(ui_->chkAutoSelectFilter, QStringLiteral("PROP GENERAL AUTOSELECT"));
    SetCaption(ui_->chkViewGridLines, QStringLiteral("PROP GENERAL GRID LINES"));
    SetCaption(ui_->chkSysNumFormat, QStringLiteral("PROP GENERAL NUM FORMAT"));
    SetCaption(ui_->chkFootnotes, QStringLiteral("FootNotes"));
    SetCaption(ui_->chkGlobalColor, QStringLiteral("PROP DB GLOBAL COLOR"));
    SetCaption(ui_->cmdBrowseColor, QStringLiteral("BROWSE"));
    SetCaption(ui_->lblContentOption, QStringLiteral("PROP DB CONTENT OPT"));
    SetCaption(ui_->optContentOption_0, QStringLiteral("PROP DB DATA EXISTS"));
    SetCaption(ui_->optContentOption_1, QStringLiteral("PROP DB ALL DATA"));
    SetCaption(ui_->optContentOption_2, QStringLiteral("Missing Data"));
    SetCaption(ui_->lblProdName, QStringLiteral("PRODUCT NAME"));
    SetCaption(ui_->lblProductPath, QStringLiteral("PROP GENERAL PDT Path"));
    SetCaption(ui_->lblSubject, QStringLiteral("PROP GENERAL Subject"));
    SetCaption(ui_->lblGeoRef, QStringLiteral("PROP GENERAL Geo Ref"));
    SetCaption(ui_->lblSound, QStringLiteral("TS_PropSound"));
    SetCaption(ui_->cmdBrowseSound, QStringLiteral("BROWSE"));
    SetCaption(ui_->cmdPreview, QStringLiteral("Play"));
    SetCaption(ui_->cmdStop, QStringLiteral("TLB_STOP"));
    SetCaption(ui_->lblVolume, QStringLiteral("TS_PropVolume"));
    SetCaption(ui_->chkMute, QStringLiteral("TS_PropMute"));
    SetCaption(ui_->lblViews, QStringLiteral("PROP IND TAB SELECTION"));
    SetCaption(ui_->lblDefault, QStringLiteral("Default"));
    for (int view = 0; view < 7; ++view) {
        SetCaption(findChild<QCheckBox*>(QStringLiteral("chkIndOptions_%1").arg(view)), QLatin1String(kViewKeys[view]));
        findChild<QRadioButton*>(QStringLiteral("optDefault_%1").arg(view))
            ->setAccessibleName(PlainText(QStringLiteral("Default")) + QLatin1Char(' ') +
                                PlainText(QLatin1String(kViewKeys[view])));
    }
    SetCaption(ui_->chkUnitSubpop, QStringLiteral("PROP IND UNIT SUBPOP"));
    SetCaption(ui_->cmdImport, QStringLiteral("Import"));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
    SetCaption(ui_->cmdApply, QStringLiteral("APPLY BUTTON"));
}

void frmProperties::FillLanguages() {
    const QSignalBlocker quiet(ui_->cmbLanguages);
    ui_->cmbLanguages->clear();
    for (const LanguageFile& file : std::as_const(LanguageFiles))
        ui_->cmbLanguages->addItem(file.label);
    ui_->cmbLanguages->setCurrentIndex(ui_->cmbLanguages->findText(Language, Qt::MatchFixedString));
}

void frmProperties::FillSounds() {
    ui_->cmbSounds->clear();
    ui_->cmbSounds->addItem(PlainText(QStringLiteral("TS_PropNoSound")), QString());
    const QStringList files = FilesOf(SoundFolder());
    for (const QString& file : files)
        ui_->cmbSounds->addItem(file, JoinPath({AppPath, Setting(QStringLiteral("Sound Folder")), file}));
    int place = 0;
    for (int item = 1; item < ui_->cmbSounds->count(); ++item)
        if (SamePath(ui_->cmbSounds->itemData(item).toString(), SoundFile)) place = item;
    if (place == 0 && !SoundFile.isEmpty()) {
        ui_->cmbSounds->addItem(FileNameOf(SoundFile), SoundFile);
        place = ui_->cmbSounds->count() - 1;
    }
    ui_->cmbSounds->setCurrentIndex(place);
}

void frmProperties::LoadControls() {
    before_ = PropertyValues::OfSession();
    FillLanguages();
    ui_->cmbSystemFonts->setCurrentFont(QFont(ProductFont));
    ui_->cmbFontStyle->setCurrentIndex(std::clamp(ProductFontStyle, 0, 3));
    if (ui_->cmbFontSize->findData(ProductFontSize) < 0)
        ui_->cmbFontSize->addItem(QString::number(ProductFontSize), ProductFontSize);
    ui_->cmbFontSize->setCurrentIndex(ui_->cmbFontSize->findData(ProductFontSize));
    ui_->chkAutoCollapseTreeViewSelection->setChecked(before_.collapse);
    ui_->chkAutoSelectFilter->setChecked(before_.autoSelect);
    ui_->chkViewGridLines->setChecked(before_.gridLines);
    ui_->chkSysNumFormat->setChecked(before_.numFormat);
    ui_->chkFootnotes->setChecked(before_.footnotes);
    ui_->chkGlobalColor->setChecked(before_.showGlobalColor);
    color_ = ColorFromNumber(before_.globalColor);
    ShowColor();
    if (auto* option = findChild<QRadioButton*>(QStringLiteral("optContentOption_%1").arg(before_.dataExists)))
        option->setChecked(true);
    ui_->txtProdName->setText(Setting(QStringLiteral("PRODUCT NAME")) + QLatin1Char(' ') +
                              Setting(QStringLiteral("PRODUCT VERSION")));
    ui_->cmbProductPath->setText(AppPath);
    ui_->txtSubject->setText(Setting(QStringLiteral("SUBJECT")));
    ui_->cmbGeoRef->setText(Setting(QStringLiteral("GEO REFERENCE")));
    FillSounds();
    ui_->chkMute->setChecked(before_.mute);
    bool hasDefault = false;
    for (int view = 0; view < 7; ++view) {
        auto* wanted = findChild<QCheckBox*>(QStringLiteral("chkIndOptions_%1").arg(view));
        auto* opens = findChild<QRadioButton*>(QStringLiteral("optDefault_%1").arg(view));
        const bool offered = view == 0 || SettingOption(IndicatorViews[static_cast<std::size_t>(view)].key).offered;
        wanted->setVisible(offered);
        opens->setVisible(offered);
        wanted->setChecked(view == 0 || before_.views[static_cast<std::size_t>(view)]);
        opens->setChecked(before_.openWith.trimmed() == QString::number(view + 1));
        hasDefault = hasDefault || opens->isChecked();
    }
    if (!hasDefault) ui_->optDefault_0->setChecked(true);
    ui_->chkIndOptions_0->setEnabled(false); // one view has to stay
    ui_->chkUnitSubpop->setChecked(before_.selectBy == 1);
    EnableViews();
    ShowPreview();
}

/// A view that isn't shown can't be the one to open with.
void frmProperties::EnableViews() {
    for (int view = 0; view < 7; ++view) {
        const auto* wanted = findChild<QCheckBox*>(QStringLiteral("chkIndOptions_%1").arg(view));
        auto* opens = findChild<QRadioButton*>(QStringLiteral("optDefault_%1").arg(view));
        opens->setEnabled(wanted->isChecked());
        if (!wanted->isChecked() && opens->isChecked()) ui_->optDefault_0->setChecked(true);
    }
}

PropertyValues frmProperties::ReadControls() const {
    PropertyValues values = before_;
    values.language =
        ui_->cmbLanguages->currentText().isEmpty() ? QStringLiteral("en") : ui_->cmbLanguages->currentText();
    values.font = ui_->cmbSystemFonts->currentFont().family();
    values.fontSize = ui_->cmbFontSize->currentData().toInt();
    values.fontStyle = ui_->cmbFontStyle->currentIndex();
    values.collapse = ui_->chkAutoCollapseTreeViewSelection->isChecked();
    values.autoSelect = ui_->chkAutoSelectFilter->isChecked();
    values.gridLines = ui_->chkViewGridLines->isChecked();
    values.numFormat = ui_->chkSysNumFormat->isChecked();
    values.footnotes = ui_->chkFootnotes->isChecked();
    values.showGlobalColor = ui_->chkGlobalColor->isChecked();
    values.globalColor = NumberFromColor(color_);
    for (int option = 0; option < 3; ++option)
        if (findChild<QRadioButton*>(QStringLiteral("optContentOption_%1").arg(option))->isChecked())
            values.dataExists = option;
    values.sound = ui_->cmbSounds->currentData().toString();
    values.mute = ui_->chkMute->isChecked();
    for (int view = 0; view < 7; ++view) {
        values.views[static_cast<std::size_t>(view)] =
            findChild<QCheckBox*>(QStringLiteral("chkIndOptions_%1").arg(view))->isChecked();
        if (findChild<QRadioButton*>(QStringLiteral("optDefault_%1").arg(view))->isChecked())
            values.openWith = QString::number(view + 1);
    }
    values.selectBy = ui_->chkUnitSubpop->isChecked() ? 1 : 0;
    return values;
}

void frmProperties::ConnectControls() {
    connect(ui_->cmbLanguages, &QComboBox::currentIndexChanged, this, &frmProperties::cmbLanguages_Click);
    connect(ui_->cmbSystemFonts, &QFontComboBox::currentFontChanged, this, &frmProperties::ShowPreview);
    for (QComboBox* box : {ui_->cmbFontStyle, ui_->cmbFontSize})
        connect(box, &QComboBox::currentIndexChanged, this, &frmProperties::ShowPreview);
    connect(ui_->cmdImport, &QPushButton::clicked, this, &frmProperties::cmdImport_Click);
    connect(ui_->cmdBrowseColor, &QPushButton::clicked, this, [this] {
        const QColor chosen = QColorDialog::getColor(color_, this);
        if (!chosen.isValid()) return;
        color_ = chosen;
        ShowColor();
    });
    connect(ui_->cmdBrowseSound, &QPushButton::clicked, this, [this] {
        const QString file =
            AskForFile(this, {PlainText(QStringLiteral("TS_PropSound")), SoundFolder(),
                              PlainText(QStringLiteral("TS_FilterSound")) + QStringLiteral(" (*.wav *.mp3 *.ogg)")});
        if (file.isEmpty()) return;
        ui_->cmbSounds->addItem(FileNameOf(file), file);
        ui_->cmbSounds->setCurrentIndex(ui_->cmbSounds->count() - 1);
    });
    connect(ui_->cmdPreview, &QPushButton::clicked, this, [this] {
        preview_.Load(ui_->cmbSounds->currentData().toString());
        preview_.SetMuted(false);
        preview_.SetVolume(static_cast<float>(ui_->Slider1->value()) / 100);
        preview_.Tick();
    });
    connect(ui_->cmdStop, &QPushButton::clicked, this, [this] { preview_.Load({}); });
    connect(ui_->Slider1, &QSlider::valueChanged, this,
            [this](int value) { preview_.SetVolume(static_cast<float>(value) / 100); });
    for (int view = 0; view < 7; ++view)
        connect(findChild<QCheckBox*>(QStringLiteral("chkIndOptions_%1").arg(view)), &QCheckBox::toggled, this,
                &frmProperties::EnableViews);
    connect(ui_->cmdApply, &QPushButton::clicked, this, &frmProperties::cmdApply_Click);
    connect(ui_->cmdOK, &QPushButton::clicked, this, [this] {
        cmdApply_Click();
        accept();
    });
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

// The font that the language's own file names for it.
void frmProperties::cmbLanguages_Click() {
    ErrorTrap trap("cmbLanguages_Click");
    const QString language = ui_->cmbLanguages->currentText();
    const auto connection = CreateTheConnection(FileOfLanguage(language));
    if (!connection) return;
    const Records rows =
        Select(QStringLiteral("Select DISTINCT FontName, FontSize FROM LangMaster WHERE LangCode = '") +
                   QuoteDoubled(language) + QStringLiteral("'"),
               jet::CursorType::Static, connection.get());
    if (rows.atEnd()) return;
    if (!rows.Text("FontName").isEmpty()) ui_->cmbSystemFonts->setCurrentFont(QFont(rows.Text("FontName")));
    const int size = static_cast<int>(rows.Number("FontSize"));
    if (ui_->cmbFontSize->findData(size) >= 0) ui_->cmbFontSize->setCurrentIndex(ui_->cmbFontSize->findData(size));
}

void frmProperties::ShowPreview() {
    QFont font(ui_->cmbSystemFonts->currentFont().family(), ui_->cmbFontSize->currentData().toInt());
    const int style = ui_->cmbFontStyle->currentIndex();
    font.setItalic(style == 1 || style == 3);
    font.setBold(style >= 2);
    ui_->lblPreviewText->setFont(font);
    QPalette palette = ui_->lblPreviewText->palette();
    palette.setColor(QPalette::Window, palette.color(QPalette::Base));
    ui_->lblPreviewText->setPalette(palette);
}

void frmProperties::ShowColor() {
    QPalette palette = ui_->lblGlobalColor->palette();
    palette.setColor(QPalette::Window, color_);
    ui_->lblGlobalColor->setPalette(palette);
}

void frmProperties::cmdImport_Click() {
    ErrorTrap trap("cmdImport_Click");
    const QString file =
        AskForFile(this, {PlainText(QStringLiteral("Import")),
                          {},
                          PlainText(QStringLiteral("TS_FilterLanguage")) + QStringLiteral(" (TS_*.mdb)")});
    if (file.isEmpty()) return;
    QString name = FileNameOf(file);
    if (!name.contains(QLatin1Char(']'))) {
        ShowMessage(GetText(QStringLiteral("TS_PropImportRefused")), MessageType::Ok, 102, {}, false);
        return;
    }
    if (!name.endsWith(QLatin1String(".mdb"), Qt::CaseInsensitive)) name += QStringLiteral(".mdb");
    const QString folder = GetRegistryValue(AppPath, QString::fromLatin1(LocalMachine),
                                            QStringLiteral("Software\\TESSARO"), QStringLiteral("Language Path"));
    const QString target = WritablePlace(JoinPath({FindPath(folder), name}), AppPath, CacheFolder);
    if (FileExists(target) && ShowMessage(QStringLiteral("285"), MessageType::YesNo, 104) != MessageCode::Yes) return;
    if (!CopyFileOver(file, target)) {
        ShowMessage(GetText(QStringLiteral("TS_ExportFailed")).replace(QStringLiteral("%1"), target), MessageType::Ok,
                    102, {}, false);
        return;
    }
    FillLanguageArray();
    FillLanguages();
}

void frmProperties::cmdApply_Click() {
    ErrorTrap trap("cmdApply_Click");
    const PropertyValues now = ReadControls();
    if (now == before_) return;
    const PropertyValues before = before_;
    now.PutIntoSession();
    apply_(before, now);
    SavePrefINIFile();
    before_ = PropertyValues::OfSession();
    SetFormCaptions();
    ShowPreview();
}

} // namespace tessaro
