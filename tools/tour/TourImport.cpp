#include "Sum.h"
#include "Tour.h"
#include "controls/FileDialogs.h"
#include "exchange/frmImport.h"
#include "session/Session.h"
#include "shell/frmMain.h"

#include <QAbstractButton>
#include <QFile>
#include <QTest>

namespace tessaro {

namespace {

/// A table as a statistical office has it: decimal commas, thousands apart, one place without a value and one with a
/// word for a number. Gives what the others add up to.
Sum WriteOwnTable(const QString& path) {
    static constexpr const char* places[] = {"Côte", "Plateau", "Rivière", "Savane", "Lagune", "Ville"};
    QByteArray text("Zone;Année;Indicateur;Unité;Valeur\r\n");
    Sum values;
    for (int place = 0; place < 6; ++place)
        for (int year = 2015; year < 2020; ++year) {
            const int hundredths = 104'350 + 1'217 * place + 31 * (year - 2015);
            QByteArray value = "1 " + QByteArray::number(hundredths / 100).right(3) + ',' +
                               QByteArray::number(hundredths % 100 + 100).right(2);
            if (place == 2 && year == 2016) value = "..";
            if (place == 3 && year == 2017) value = "beaucoup";
            text += QByteArray(places[place]) + ';' + QByteArray::number(year) + ";Pluie;mm;" + value + "\r\n";
            if (value.startsWith('1')) values.Add(value.replace(' ', "").replace(',', '.').toDouble());
        }
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? values : Sum();
}

void Press(QWidget& wizard, const char* name) {
    QTest::mouseClick(wizard.findChild<QAbstractButton*>(QLatin1String(name)), Qt::LeftButton);
}

} // namespace

void Tour::DriveImport(QWidget& wizard, const QString& target) const {
    const auto next = [&](const char* picture) {
        Press(wizard, "CmdNext");
        QTest::qWait(100);
        wizard.grab().save(folder_.filePath(QLatin1String(picture)));
    };
    next("import-2.png");
    next("import-3.png");
    next("import-4.png");
    SetFileAnswerer([target](const FileQuestion&) { return target; });
    Press(wizard, "CmdFinish");
}

Tour::Finding Tour::Import() {
    const QString table = folder_.absoluteFilePath(QStringLiteral("Own values.csv"));
    const QString target = folder_.absoluteFilePath(QStringLiteral("Own values.mdb"));
    QFile::remove(target);
    const Sum written = WriteOwnTable(table);
    const bool seen = WithDialog(
        QStringLiteral("mnuFilemnu_ImportExport"), QStringLiteral("frmImport"), QStringLiteral("import-1"), false,
        [&](QWidget& dialog) {
            auto& wizard = dynamic_cast<frmImport&>(dialog);
            if (!wizard.Draft().columns.empty()) return true;
            SetFileAnswerer([table](const FileQuestion&) { return table; });
            Press(wizard, "cmdBrowse");
            wizard.findChild<QAbstractButton*>(QStringLiteral("optInto_0"))->click();
            return false;
        },
        [&](QWidget& dialog) { DriveImport(dialog, target); });
    SetFileAnswerer({});
    const bool open = WaitUntil([&] { return DatabaseOpen && CurrentDatabase == target && LanguageInDatabase; });
    const Sum stored = ValuesOf(target);
    return {seen && open && written.Matches(stored) && RowsOf("Area") == 6,
            QStringLiteral("%1 of %2 values in a database of their own, open").arg(stored.count).arg(written.count)};
}

} // namespace tessaro
