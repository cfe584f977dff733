#include "shell/frmProperties.h"

#include "controls/Captions.h"
#include "controls/ColorDialogs.h"
#include "controls/FileDialogs.h"
#include "controls/Theme.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "session/UserPreferences.h"
#include "ui_frmProperties.h"

#include <QButtonGroup>
#include <QShortcut>

namespace tessaro {

namespace {

QString FilterLine(const char* key, const char* patterns) {
    return PlainText(QLatin1String(key)) + QStringLiteral(" (") + QLatin1String(patterns) + QLatin1Char(')');
}

void Choose(QComboBox& box, const QString& text) {
    int place = box.findText(text, Qt::MatchFixedString);
    if (place < 0 && !text.trimmed().isEmpty()) {
        box.addItem(text);
        place = box.count() - 1;
    }
    box.setCurrentIndex(place);
}

} // namespace

frmProperties::frmProperties(int volume, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmProperties>()), optContentOption_(new QButtonGroup(this)),
      optDefault_(new QButtonGroup(this)), chkIndOptions_(new QButtonGroup(this)) {
    const ErrorTrap trap("frmProperties_Load");
    ui_->setupUi(this);
    chkIndOptions_->setExclusive(false);
    for (int item = 0; item < 3; ++item)
        optContentOption_->addButton(findChild<QAbstractButton*>(QStringLiteral("optContentOption_%1").arg(item)),
                                     item);
    for (int view = 0; view < 7; ++view) {
        chkIndOptions_->addButton(findChild<QAbstractButton*>(QStringLiteral("chkIndOptions_%1").arg(view)), view);
        optDefault_->addButton(findChild<QAbstractButton*>(QStringLiteral("optDefault_%1").arg(view)), view);
    }
    FillChoices();
    SetFormCaptions();
    ArrangeIndicatorOptions();
    before_ = Preferences::OfSession();
    Show(before_);
    ui_->Slider1->setValue(volume);
    preview_.SetVolume(volume);
    ConnectGeneral();
    ConnectOthers();
    ui_->cmbLanguages->setFocus();
    WalkTabsByKey();
}

/// Ctrl+Tab and Ctrl+Shift+Tab. A combo box that has the focus keeps these keys for its search.
void frmProperties::WalkTabsByKey() {
    for (const auto& [keys, step] :
         {std::pair{Qt::CTRL | Qt::Key_Tab, 1}, {Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab, -1}})
        connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, [this, step = step] {
            const int count = ui_->SSTab1->count();
            ui_->SSTab1->setCurrentIndex((ui_->SSTab1->currentIndex() + step + count) % count);
        });
}

frmProperties::~frmProperties() = default;

void frmProperties::ConnectGeneral() {
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmProperties::cmdOK_Click);
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui_->cmdApply, &QPushButton::clicked, this, &frmProperties::cmdApply_Click);
    connect(ui_->cmdImport, &QPushButton::clicked, this, &frmProperties::cmdImport_Click);
    connect(ui_->cmbLanguages, &QComboBox::currentIndexChanged, this, &frmProperties::cmbLanguages_Click);
    for (const QComboBox* box : {ui_->cmbSystemFonts, ui_->cmbFontStyle, ui_->cmbFontSize})
        connect(box, &QComboBox::currentIndexChanged, this, &frmProperties::ShowPreview);
}

void frmProperties::ConnectOthers() {
    connect(ui_->cmdBrowseColor, &QPushButton::clicked, this, &frmProperties::cmdBrowseColor_Click);
    connect(ui_->chkGlobalColor, &QCheckBox::toggled, this, &frmProperties::ShowColor);
    connect(ui_->cmdBrowseSound, &QPushButton::clicked, this, &frmProperties::cmdBrowseSound_Click);
    connect(ui_->cmdPreview, &QPushButton::clicked, this, &frmProperties::cmdPreview_Click);
    connect(ui_->cmdStop, &QPushButton::clicked, this, [this] { preview_.Load({}); });
    connect(ui_->Slider1, &QSlider::valueChanged, this, [this](int volume) { preview_.SetVolume(volume); });
    connect(chkIndOptions_, &QButtonGroup::idToggled, this, &frmProperties::KeepDefaultView);
}

void frmProperties::FillChoices() {
    const QSignalBlocker quiet(ui_->cmbLanguages);
    FillLanguages();
    ui_->cmbSystemFonts->addItems(FontFamilies());
    for (const int size : {8, 9, 10, 11, 12, 14, 16, 18, 20, 24})
        ui_->cmbFontSize->addItem(QString::number(size));
    FillSounds();
    FillProduct();
}

void frmProperties::FillLanguages() {
    const QString chosen = ui_->cmbLanguages->currentText();
    const QSignalBlocker quiet(ui_->cmbLanguages);
    ui_->cmbLanguages->clear();
    for (const LanguageFile& file : std::as_const(LanguageFiles))
        ui_->cmbLanguages->addItem(file.label);
    Choose(*ui_->cmbLanguages, chosen);
}

void frmProperties::FillSounds() {
    ui_->cmbSounds->clear();
    ui_->cmbSounds->addItems(Sounds());
}

/// Name and folder of the product and the open database; for reading only.
void frmProperties::FillProduct() {
    ui_->txtProdName->setText(Setting(QStringLiteral("PRODUCT NAME")) + QLatin1Char(' ') +
                              Setting(QStringLiteral("PRODUCT VERSION")));
    const QString folder = FindPath(AppPath);
    ui_->cmbProductPath->addItem(QChar(0x200E) + folder); // U+200E: a path runs from left to right in every language
    ui_->cmbProductPath->setToolTip(folder);
    const ProductScope scope = ScopeOfDatabase();
    ui_->txtSubject->setText(scope.subject);
    ui_->cmbGeoRef->addItems(scope.areas);
    ui_->cmbGeoRef->setEnabled(!scope.areas.isEmpty());
}

/// The views that the product offers, in their order; sectors can't be switched off.
void frmProperties::ArrangeIndicatorOptions() {
    for (int view = 0; view < 7; ++view) {
        const bool offered = view == 0 || IsViewOffered(view);
        chkIndOptions_->button(view)->setVisible(offered);
        optDefault_->button(view)->setVisible(offered);
    }
    chkIndOptions_->button(0)->setEnabled(false);
}

void frmProperties::Show(const Preferences& values) {
    Choose(*ui_->cmbLanguages, values.language);
    ChooseFont(values.font, values.fontSize);
    ui_->cmbFontStyle->setCurrentIndex(qBound(0, values.fontStyle, 3));
    ui_->chkAutoCollapseTreeViewSelection->setChecked(values.collapseTree);
    ui_->chkAutoSelectFilter->setChecked(values.autoSelectForm);
    ui_->chkViewGridLines->setChecked(values.gridLines);
    ui_->chkSysNumFormat->setChecked(values.systemNumbers);
    ui_->chkFootnotes->setChecked(values.footnotes);
    ui_->chkGlobalColor->setChecked(values.showGlobalColor);
    color_ = values.globalColor;
    ShowColor();
    optContentOption_->button(static_cast<int>(qBound(0L, values.dataExists, 2L)))->setChecked(true);
    ChooseSound(values.sound);
    ui_->chkMute->setChecked(values.mute);
    for (int view = 0; view < 7; ++view)
        chkIndOptions_->button(view)->setChecked(values.views.at(static_cast<std::size_t>(view)));
    optDefault_->button(values.openWith)->setChecked(true);
    ui_->chkUnitSubpop->setChecked(values.byCombination);
    sample_ = FaceOfLanguage(values.language).sample;
    KeepDefaultView();
    ShowPreview();
}

Preferences frmProperties::Draft() const {
    Preferences draft = before_;
    draft.language = ui_->cmbLanguages->currentText();
    draft.font = ui_->cmbSystemFonts->currentText();
    draft.fontSize = ui_->cmbFontSize->currentText().toInt();
    draft.fontStyle = ui_->cmbFontStyle->currentIndex();
    draft.collapseTree = ui_->chkAutoCollapseTreeViewSelection->isChecked();
    draft.autoSelectForm = ui_->chkAutoSelectFilter->isChecked();
    draft.gridLines = ui_->chkViewGridLines->isChecked();
    draft.systemNumbers = ui_->chkSysNumFormat->isChecked();
    draft.footnotes = ui_->chkFootnotes->isChecked();
    draft.showGlobalColor = ui_->chkGlobalColor->isChecked();
    draft.globalColor = color_;
    draft.dataExists = optContentOption_->checkedId();
    draft.sound = PathOfSound(ui_->cmbSounds->currentText());
    draft.mute = ui_->chkMute->isChecked();
    for (int view = 0; view < 7; ++view)
        draft.views.at(static_cast<std::size_t>(view)) = chkIndOptions_->button(view)->isChecked();
    draft.openWith = optDefault_->checkedId();
    draft.byCombination = ui_->chkUnitSubpop->isChecked();
    return draft;
}

void frmProperties::Apply() {
    const ErrorTrap trap("cmdApply_Click");
    preview_.Load({});
    const Preferences previous = before_;
    Draft().TakeIntoSession();
    before_ = Preferences::OfSession();
    SavePrefINIFile();
    Q_EMIT Applied(previous, ui_->Slider1->value());
}

void frmProperties::cmdOK_Click() {
    Apply();
    accept();
}

void frmProperties::cmdApply_Click() {
    Apply();
    SetFormCaptions();
    ShowPreview();
}

void frmProperties::cmdImport_Click() {
    const QString file = AskForFile(
        this, {PlainText(QStringLiteral("Import")), {}, FilterLine("TS_FilterLanguage", "TS_*.mdb TS_*.MDB")});
    if (file.isEmpty() || !ImportLanguageFile(file)) return;
    FillLanguages();
    Q_EMIT LanguageImported(file);
    SetFormCaptions(); // the file may be that of the current language
}

void frmProperties::cmbLanguages_Click() {
    const LanguageFace face = FaceOfLanguage(ui_->cmbLanguages->currentText());
    sample_ = face.sample;
    ChooseFont(face.font, face.size);
    ShowPreview();
}

void frmProperties::ChooseFont(const QString& family, int size) {
    if (!family.isEmpty()) Choose(*ui_->cmbSystemFonts, family);
    if (size > 0) Choose(*ui_->cmbFontSize, QString::number(size));
}

void frmProperties::ShowPreview() {
    QFont font(ui_->cmbSystemFonts->currentText());
    const int size = ui_->cmbFontSize->currentText().toInt();
    if (size > 0) font.setPointSize(size);
    const int style = ui_->cmbFontStyle->currentIndex();
    font.setItalic(style == 1 || style == 3);
    font.setBold(style == 2 || style == 3);
    ui_->lblPreviewText->setFont(font);
    ui_->lblPreviewText->setText(sample_.isEmpty() ? ui_->cmbLanguages->currentText() : sample_);
}

void frmProperties::ShowColor() {
    const bool shown = ui_->chkGlobalColor->isChecked();
    const QColor color = ColorFromNumber(color_);
    ui_->lblGlobalColor->setPixmap(ColorSquare(shown ? color : theme::SurfaceRaised(), 3 * theme::kGrid));
    ui_->lblGlobalColor->setAccessibleName(PlainText(QStringLiteral("COMM_Color")) + QLatin1Char(' ') + color.name());
    ui_->cmdBrowseColor->setEnabled(shown);
}

void frmProperties::cmdBrowseColor_Click() {
    const QColor chosen = AskForColor(this, PlainText(QStringLiteral("PROP DB GLOBAL COLOR")), ColorFromNumber(color_));
    if (!chosen.isValid()) return;
    color_ = NumberFromColor(chosen);
    ShowColor();
}

void frmProperties::ChooseSound(const QString& path) {
    Choose(*ui_->cmbSounds, NameOfSound(path));
}

void frmProperties::cmdBrowseSound_Click() {
    const QString file = AskForFile(this, {PlainText(QStringLiteral("PROP SOUNDS TAB")),
                                           FindPath(JoinPath({AppPath, Setting(QStringLiteral("Sound Folder"))})),
                                           FilterLine("TS_FilterSound", "*.wav *.mp3 *.ogg *.mid *.wma *.flac")});
    if (!file.isEmpty()) ChooseSound(file);
}

void frmProperties::cmdPreview_Click() {
    preview_.Load(PathOfSound(ui_->cmbSounds->currentText()));
    preview_.SetMuted(false);
    preview_.Tick();
}

/// Only a view that is on can be the first; when it is switched off, the first becomes Sectors.
void frmProperties::KeepDefaultView() {
    for (int view = 0; view < 7; ++view) {
        const bool on = chkIndOptions_->button(view)->isChecked();
        if (!on && optDefault_->button(view)->isChecked()) optDefault_->button(0)->setChecked(true);
        optDefault_->button(view)->setEnabled(on);
    }
}

void frmProperties::setTheFontForProp() {
    // Names of fonts, languages and files are shown in the default font.
    for (QComboBox* box : {ui_->cmbLanguages, ui_->cmbSystemFonts, ui_->cmbFontSize, ui_->cmbSounds})
        box->setFont(DefaultFont());
}

void frmProperties::SetFormCaptions() {
    SetFormFonts(this);
    setTheFontForProp();
    setWindowTitle(PlainText(QStringLiteral("TS_Preferences")));
    constexpr const char* tabs[] = {"PROP GENERAL TAB", "PROP DB TAB", "PROP SOUNDS TAB", "Comm_Indicator"};
    for (int tab = 0; tab < 4; ++tab)
        ui_->SSTab1->setTabText(tab, PlainText(QLatin1String(tabs[tab])));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
    SetCaption(ui_->cmdApply, QStringLiteral("APPLY BUTTON"));
    SetGeneralCaptions();
    SetOtherCaptions();
    ui_->cmbProductPath->setLayoutDirection(Qt::LeftToRight);
    for (QLineEdit* field : {ui_->txtProdName, ui_->txtSubject})
        field->setAlignment(ReadingSide());
    FillFontStyles();
}

void frmProperties::SetGeneralCaptions() {
    SetCaption(ui_->lblLanguages, QStringLiteral("PROP GENERAL LANGUAGE"));
    SetCaption(ui_->cmdImport, QStringLiteral("Import"));
    SetCaption(ui_->lblSystemFonts, QStringLiteral("COMM_Font"));
    SetCaption(ui_->lblFontStyle, QStringLiteral("Style"));
    SetCaption(ui_->lblFontSize, QStringLiteral("Size"));
    SetCaption(ui_->lblPreview, QStringLiteral("Preview"));
    SetCaption(ui_->chkAutoCollapseTreeViewSelection, QStringLiteral("PROP GENERAL AUTOCOLLAPSE"));
    SetCaption(ui_->chkAutoSelectFilter, QStringLiteral("PROP GENERAL AUTOSELECT"));
    SetCaption(ui_->chkViewGridLines, QStringLiteral("PROP GENERAL GRID LINES"));
    SetCaption(ui_->chkSysNumFormat, QStringLiteral("PROP GENERAL NUM FORMAT"));
    SetCaption(ui_->chkFootnotes, QStringLiteral("FootNotes"));
    SetCaption(ui_->lblProdName, QStringLiteral("PRODUCT NAME"));
    SetCaption(ui_->lblProductPath, QStringLiteral("PROP GENERAL PDT Path"));
    SetCaption(ui_->lblSubject, QStringLiteral("PROP GENERAL Subject"));
    SetCaption(ui_->lblGeoRef, QStringLiteral("PROP GENERAL Geo Ref"));
}

void frmProperties::SetOtherCaptions() {
    SetCaption(ui_->chkGlobalColor, QStringLiteral("PROP DB GLOBAL COLOR"));
    SetCaption(ui_->cmdBrowseColor, QStringLiteral("TS_ChooseColor"));
    SetCaption(ui_->lblContentOption, QStringLiteral("PROP DB CONTENT OPT"));
    constexpr const char* contents[] = {"PROP DB DATA EXISTS", "PROP DB ALL DATA", "Missing Data"};
    for (int item = 0; item < 3; ++item)
        SetCaption(optContentOption_->button(item), QLatin1String(contents[item]));
    SetCaption(ui_->lblSounds, QStringLiteral("TS_Sound"));
    SetCaption(ui_->cmdBrowseSound, QStringLiteral("TS_BrowseSound"));
    SetCaption(ui_->cmdPreview, QStringLiteral("Play"));
    SetCaption(ui_->cmdStop, QStringLiteral("TLB_STOP"));
    SetCaption(ui_->lblVolume, QStringLiteral("TS_Volume"));
    SetCaption(ui_->chkMute, QStringLiteral("TS_Mute"));
    const bool audible = SoundLoop::HasDevice();
    ui_->lblNoSound->setText(audible ? QString() : PlainText(QStringLiteral("TS_NoSoundDevice")));
    ui_->cmdPreview->setEnabled(audible);
    ui_->cmdStop->setEnabled(audible);
    constexpr const char* views[] = {"SECTOR",      "GOAL", "CONCEPTUAL FRAMEWORK", "THEME", "Comm_Source",
                                     "INSTITUTION", "RIGHT"};
    SetCaption(ui_->lblIndOptions, QStringLiteral("TS_ViewsShown"));
    SetCaption(ui_->lblDefault, QStringLiteral("PROP IND TAB SELECTION"));
    for (int view = 0; view < 7; ++view) {
        SetCaption(chkIndOptions_->button(view), QLatin1String(views[view]));
        SetCaption(optDefault_->button(view), QStringLiteral("Default"));
        optDefault_->button(view)->setAccessibleName(PlainText(QStringLiteral("Default")) + QStringLiteral(": ") +
                                                     PlainText(QLatin1String(views[view])));
    }
    SetCaption(ui_->chkUnitSubpop, QStringLiteral("PROP IND UNIT SUBPOP"));
}

void frmProperties::FillFontStyles() {
    const int chosen = qMax(0, ui_->cmbFontStyle->currentIndex());
    const QSignalBlocker quiet(ui_->cmbFontStyle);
    ui_->cmbFontStyle->clear();
    for (const char* key : {"PROP GENERAL FONT STYLE REGULAR", "PROP GENERAL FONT STYLE ITALICS",
                            "PROP GENERAL FONT STYLE BOLD", "PROP GENERAL FONT STYLE BOLD ITALICS"})
        ui_->cmbFontStyle->addItem(PlainText(QLatin1String(key)));
    ui_->cmbFontStyle->setCurrentIndex(chosen);
}

} // namespace tessaro
