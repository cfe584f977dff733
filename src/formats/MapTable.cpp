#include "formats/MapTable.h"

#include "platform/Files.h"

#include <QFile>

#include <shapefil.h>

namespace tessaro {

QByteArray MapTableText(const QString& text) {
    QString cut = text;
    while (cut.toUtf8().size() > kLongestTableText)
        cut.chop(1);
    return cut.toUtf8();
}

bool WriteMapTable(const QString& stem, const std::vector<MapTableRow>& rows) {
    DBFHandle table = DBFCreateEx(QFile::encodeName(stem + QStringLiteral(".dbf")).constData(), "UTF-8");
    if (table == nullptr) return false;
    bool good = DBFAddField(table, "ID_", FTString, 60, 0) >= 0 &&
                DBFAddField(table, "Name1_", FTString, kLongestTableText, 0) >= 0;
    for (std::size_t row = 0; good && row < rows.size(); ++row)
        good = DBFWriteStringAttribute(table, static_cast<int>(row), 0, MapTableText(rows[row].id).constData()) != 0 &&
               DBFWriteStringAttribute(table, static_cast<int>(row), 1, MapTableText(rows[row].name).constData()) != 0;
    DBFClose(table);
    return good && ReplaceFile(stem + QStringLiteral(".cpg"), "UTF-8");
}

} // namespace tessaro
