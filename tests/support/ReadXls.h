#pragma once

#include "TestPlaces.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QString>

#include <stdexcept>
#include <vector>

namespace tessaro::test {

/// A sheet of an ".xls" file as an independent reader sees it.
struct ReadSheet {
    QString name;
    QJsonArray rows; ///< rows of cells: number, text or null
    QJsonObject looks;
    QJsonObject notes;
    QJsonArray merged;
    QJsonObject runs;
    QJsonArray frozen;
    bool gridLines = true;
    bool rightToLeft = false;

    [[nodiscard]] QJsonValue At(int row, int column) const { return rows.at(row - 1).toArray().at(column - 1); }
    [[nodiscard]] QString Text(int row, int column) const { return At(row, column).toString(); }
    [[nodiscard]] QJsonObject Look(int row, int column) const {
        return looks.value(QStringLiteral("%1,%2").arg(row).arg(column)).toObject();
    }
    [[nodiscard]] QString Note(int row, int column) const {
        return notes.value(QStringLiteral("%1,%2").arg(row).arg(column)).toString();
    }
};

/// Reads the file with python3-xlrd; throws when it refuses.
inline std::vector<ReadSheet> ReadXls(const QString& file) {
    QProcess reader;
    reader.start(QStringLiteral("/usr/bin/python3"), {QStringLiteral(TESSARO_TESTS "/support/read_xls.py"), file});
    if (!reader.waitForFinished(60000) || reader.exitCode() != 0)
        throw std::runtime_error("xls reader: " + reader.readAllStandardError().toStdString());
    std::vector<ReadSheet> sheets;
    const auto lines = reader.readAllStandardOutput().split('\n');
    for (const QByteArray& line : lines) {
        if (line.trimmed().isEmpty()) continue;
        const QJsonObject sheet = QJsonDocument::fromJson(line).object();
        sheets.push_back(
            {sheet.value(QLatin1String("name")).toString(), sheet.value(QLatin1String("rows")).toArray(),
             sheet.value(QLatin1String("looks")).toObject(), sheet.value(QLatin1String("notes")).toObject(),
             sheet.value(QLatin1String("merged")).toArray(), sheet.value(QLatin1String("runs")).toObject(),
             sheet.value(QLatin1String("frozen")).toArray(), sheet.value(QLatin1String("gridLines")).toBool(),
             sheet.value(QLatin1String("rightToLeft")).toBool()});
    }
    return sheets;
}

} // namespace tessaro::test
