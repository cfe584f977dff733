#pragma once

#include "formats/TableReader.h"

#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tessaro::test {

/// A table's rows, fields joined with "|" and a fault behind in brackets.
[[nodiscard]] inline std::vector<std::string> RowsOf(TableReader& reader) {
    static constexpr const char* faults[] = {"", "[bad text]", "[open quote]", "[too many]", "[cut]"};
    std::vector<std::string> rows;
    TableRow row;
    while (reader.Next(row)) {
        std::string text;
        for (std::size_t i = 0; i < row.count; ++i)
            text += (i > 0 ? "|" : "") + row.fields[i];
        rows.push_back(text + faults[static_cast<int>(row.fault)]);
    }
    return rows;
}

/// A file of the test with these bytes.
class FilesTest : public testing::Test {
  protected:
    [[nodiscard]] QString Write(const QByteArray& bytes, const QString& name = QStringLiteral("file")) const {
        const QString path = folder_.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return path;
    }
    [[nodiscard]] QString Path(const char* name) const { return folder_.filePath(QLatin1String(name)); }
    QTemporaryDir folder_;
};

} // namespace tessaro::test
