#include "session/ProductSettings.h"

#include "platform/Paths.h"
#include "session/Log.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/SettingsFile.h"
#include "session/WritableTree.h"

#include <QFileInfo>
#include <QStringList>

namespace tessaro {

namespace {

struct SectionKeys {
    const char* section;
    const char* keys; ///< joined by "|"
};

/// Every key of TS.ini that is read, in reading order; name and version come first, before the writable tree is made.
constexpr SectionKeys kProductKeys[] = {
    {"Product", "PRODUCT IMAGE|Product Image Bottom|Product Image Bottom2|Show Product Image Bottom2 Link|"
                "Product Banner Image|Secure Database"},
    {"Folder Location",
     "Data Folder|Maps Image Folder|Common Graphics Folder|Gallery Folder|Favorite Folder|Sound Folder|App Data Folder|"
     "Spreadsheets Folder|Tour Folder|Tour File Name|Help Folder|Help File Name|Helpdesk Link|Product Info Folder|"
     "Product Info File|Organization Info Folder|Organization Info File|Presentation Images Folder|"
     "Home Page Bottom Info Folder|Home Page Bottom Info File"},
    {"Tool Tip", "CustomToolTip"},
    {"Application Variables",
     "APP BG COLOR|APP ICON|APP ABOUT ICON|APP SEL BG COLOR|APP MOUSE MOVE BG COLOR|DEFAULT DATABASE|DEFAULT DATABASE "
     "NAME|"
     "DEFAULT FONT|DEFAULT FONT SIZE|USE DEFAULT FONT SIZE|ENG_LNG|CAPTION FOR LOCAL ADDRESS|SELECT_WITH_DATA|"
     "APP SOUND FILE|MSG TITLE"},
    {"COMMON APPLICATION VARIABLES",
     "SORT BUTTON ASC ICON|SORT BUTTON DES ICON|SORT BUTTON BG COLOR|SELECTED LIST BG COLOR|TV_Img_Closed_Icon|"
     "TV_Img_Open_Icon|TV_Img_Height|TV_Img_Width|LV_Img_Height|LV_Img_Width"},
    {"HOME TAB", "FP_LBL_HEADER_PROP_COLOR|FP_LBL_OPTIONS_PROP_COLOR|SPLASH TOP COLOR|SPLASH MIDDLE COLOR|"
                 "SPLASH BOTTOM COLOR|SPLASH SWF IMAGE|SHOW ON STARTUP OPTION|SPLASH INDICATOR 1|SPLASH INDICATOR 2|"
                 "SPLASH INDICATOR 3|SPLASH INDICATOR 4"},
    {"Indicator Tab",
     "INDICATOR_SECTOR|INDICATOR_GOALS|INDICATOR_CF|INDICATOR_THEMES|INDICATOR_SOURCES|INDICATOR_INSTITUTIONS|"
     "INDICATOR_RIGHTS|IND_IMG_AVL_ICON|IND_IMG_SEL_ICON|IND_IMG_REC_AVL_ICON|IND_IMG_REC_SEL_ICON"},
    {"Time Tab", "TIME_IMG_AVL_ICON|TIME_IMG_SEL_ICON"},
    {"Area Tab", "AREA_NAME|AREA_MAP|AREA_IMG_AVL_ICON|AREA_IMG_SEL_ICON"},
    {"Data Tab", "DATA_VIEW|DATA_STATS|DATA_SOURCES|DATA_UNITS|DATA_SUBPOPS|DATA_SORT|DATA_CALC|DATA_PRESENT|"
                 "DATA_RECENTDATA"},
    {"View Options",
     "DATA_VIEW_SORT_ASC_ICON|DATA_VIEW_SORT_DES_ICON|DATA_VIEW_SORT_HEIGHT_ICON|DATA_VIEW_SORT_WIDTH_ICON"},
    {"Sources Options", "DATA_SRC_AVL_ICON|DATA_SRC_SEL_ICON|DATA_SRC_REC_AVL_ICON|DATA_SRC_REC_SEL_ICON"},
    {"Units Options", "DATA_UNIT_AVL_ICON|DATA_UNIT_SEL_ICON"},
    {"Subpop Options", "DATA_SUBPOP_AVL_ICON|DATA_SUBPOP_SEL_ICON"},
    {"Sort Options", "DATA_SORT_ASC_ICON|DATA_SORT_DES_ICON|DATA_SORT_SEL_ASC_ICON|DATA_SORT_SEL_DES_ICON"},
    {"Calculate Options", "CALC_TIME_STAMP"},
    {"Presentations", "LBL MIDDLE COLOR"},
    {"Maps", "ENCRYPT_DECRYPT_FILES|MAP|MAP_HEADER|MAP_FOOTER|MAP_FONT|MAP_FONT_SIZE|MAP_LABEL_FONT_SIZE"},
    {"Graphs", "GRAPH"},
    {"Table", "TABLE|EDIT_BG_COLOR_GRID|TABLE_COLOR_1|TABLE_COLOR_2|TABLE_COLOR_3"},
    {"Gallery", "GALLERY"},
    {"Udr", "REPORTS"},
};

void ReadKeys(const IniFile& ini, const QString& section, const QString& keys) {
    const QStringList names = keys.split(QLatin1Char('|'));
    for (const QString& name : names)
        SetSetting(name, ini.Read(section, name));
}

/// A file that lay open is closed again, where it may be written; an installed one that can't be stays as it is.
void EncipherInPlace(const QString& path, const QByteArray& plain) {
    const QFileInfo file(FindPath(path));
    if (file.isWritable() && QFileInfo(file.path()).isWritable()) WriteSettingsFile(path, plain);
}

} // namespace

bool ReadInfoINIFile() {
    const QString path = JoinPath({AppPath, QStringLiteral("TS.ini")});
    const QString product = QStringLiteral("Product");
    const auto file = ReadSettingsFile(path, product);
    // A file that was cut off still begins well; what it has lost, the base language among it, is more than can be done
    // without.
    if (!file || !file->ini.HasSection(QStringLiteral("Application Variables"))) {
        LogNote(QLatin1String("no readable settings at ") + path);
        ShowMessage(QStringLiteral("002"));
        return false;
    }
    ForgetSettings();
    ReadKeys(file->ini, product, QStringLiteral("PRODUCT NAME|PRODUCT VERSION"));
    LocalizeApp();
    for (const SectionKeys& group : kProductKeys)
        ReadKeys(file->ini, QString::fromLatin1(group.section), QString::fromLatin1(group.keys));
    if (file->wasPlain) EncipherInPlace(path, file->ini.Contents());
    return true;
}

} // namespace tessaro
