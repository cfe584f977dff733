#include "ProjectReader.h"

#include <QStringConverter>
#include <QStringList>

#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>

namespace tessaro::test {

namespace {

/// Which class an attribute of a class refers to; several are parted by blanks.
const std::map<std::string, std::string> kTargets = {{"ODB.Roots", "Project"},
                                                     {"Project.Win", "DocWin"},
                                                     {"Project.CSMgr", "CSMgr"},
                                                     {"Project.Doc", "Table View"},
                                                     {"Project.Scripts", "NameDict"},
                                                     {"Project.WorkDir", "FN"},
                                                     {"DocWin.Owner", "Project Table View"},
                                                     {"Table.Win", "DocWin"},
                                                     {"Table.CSMgr", "CSMgr"},
                                                     {"Table.VTab", "VTab"},
                                                     {"VTab.BTab", "dBase"},
                                                     {"VTab.SelBits", "Bitmap"},
                                                     {"dBase.Fields", "Field"},
                                                     {"dBase.FileName", "FN"},
                                                     {"dBASE.Fields", "Field"},
                                                     {"dBASE.FileName", "FN"},
                                                     {"Field.BTab", "dBase dBASE"},
                                                     {"View.Win", "DocWin"},
                                                     {"View.CSMgr", "CSMgr"},
                                                     {"View.Graphics", "GList"},
                                                     {"View.Theme", "FTheme"},
                                                     {"View.Dpy", "MapDpy"},
                                                     {"GList.Dpy", "MapDpy"},
                                                     {"MapDpy.PageDpy", "PageDpy"},
                                                     {"MapDpy.MouseLoc", "PointD"},
                                                     {"FTheme.Source", "ShpSrc"},
                                                     {"FTheme.Legend", "Legend"},
                                                     {"FTheme.Threshold", "Thresh"},
                                                     {"FTheme.View", "View"},
                                                     {"FTheme.GSet", "GSet"},
                                                     {"FTheme.TxPos", "TxPosPly TxPosPt"},
                                                     {"FTheme.LabelField", "Field"},
                                                     {"ShpSrc.Name", "SrcName"},
                                                     {"ShpSrc.FTab", "FTab"},
                                                     {"SrcName.FileName", "FN"},
                                                     {"FTab.Joins", "Join"},
                                                     {"FTab.BTab", "dBase dBASE"},
                                                     {"FTab.Fields", "Field"},
                                                     {"FTab.SelBits", "Bitmap"},
                                                     {"FTab.FSrc", "ShpSrc"},
                                                     {"Join.FromBtab", "dBASE"},
                                                     {"Join.FromField", "Field"},
                                                     {"Join.ToBtab", "dBase"},
                                                     {"Join.ToField", "Field"},
                                                     {"Legend.FieldNames", "AVStr"},
                                                     {"Legend.Symbols", "SymList"},
                                                     {"Legend.Class", "LClass"},
                                                     {"Legend.NullSym", "BShSym"},
                                                     {"SymList.Child", "BShSym BLnSym BMkSym"},
                                                     {"BShSym.Color", "TClr"},
                                                     {"BShSym.OutlineColor", "TClr"},
                                                     {"BShSym.BgColor", "TClr"},
                                                     {"BLnSym.Color", "TClr"},
                                                     {"BMkSym.Color", "TClr"},
                                                     {"BMkSym.BgColor", "TClr"},
                                                     {"BMkSym.Font", "NFont"},
                                                     {"NFont.Family", "AVStr"},
                                                     {"NFont.Name", "AVStr"},
                                                     {"NFont.Style", "AVStr"}};

constexpr qsizetype kFullLine = 512;

QStringList LinesOf(const QByteArray& bytes, const char* page, std::string& faults) {
    QByteArrayList joined(1);
    for (QByteArray line : bytes.split('\n')) {
        if (line.endsWith('\r')) line.chop(1);
        if (line.size() > kFullLine) faults += "a line of " + std::to_string(line.size()) + " bytes\n";
        joined.back() += line;
        if (line.size() != kFullLine) joined << QByteArray();
    }
    QStringDecoder decoder(page);
    QStringList lines;
    for (const QByteArray& line : joined)
        lines << QString(decoder.decode(line)).trimmed();
    return lines;
}

QString Unescaped(const QString& text) {
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == QLatin1Char('\\') && i + 1 < text.size();
        const QChar c = text[escape ? ++i : i];
        if (escape && c == QLatin1Char('n'))
            plain += QLatin1Char('\n');
        else if (escape && c == QLatin1Char('t'))
            plain += QLatin1Char('\t');
        else
            plain += c;
    }
    return plain;
}

/// True for a text in quotes whose quotes inside are all escaped.
bool IsString(const QString& value) {
    if (value.size() < 2 || value.front() != QLatin1Char('"') || value.back() != QLatin1Char('"')) return false;
    qsizetype end = 1;
    while (end < value.size() && value[end] != QLatin1Char('"'))
        end += value[end] == QLatin1Char('\\') ? 2 : 1;
    return end == value.size() - 1;
}

void ReadAttribute(ReadProject& project, const QString& line) {
    const qsizetype colon = line.indexOf(QLatin1Char(':'));
    const QString value = line.mid(colon + 1).trimmed();
    const bool quoted = value.startsWith(QLatin1Char('"'));
    if (colon < 1 || value.isEmpty() || (quoted && !IsString(value)) || project.objects.empty()) {
        project.faults += "not an attribute: " + line.toStdString() + "\n";
        return;
    }
    project.objects.back().attributes.emplace_back(line.left(colon).toStdString(),
                                                   quoted ? Unescaped(value.mid(1, value.size() - 2)) : value);
}

void ReadLine(ReadProject& project, const QString& line, bool& open) {
    if (line.isEmpty()) return;
    const bool begins = line.startsWith(QLatin1Char('('));
    if (begins == open && line != QLatin1String(")") && begins) project.faults += "an object within another\n";
    if (begins) {
        const QStringList parts = line.mid(1).split(QLatin1Char('.'));
        project.objects.push_back({parts.front().toStdString(), parts.back().toInt(), {}});
        open = true;
    } else if (line == QLatin1String(")")) {
        if (!open) project.faults += "an end without a beginning\n";
        open = false;
    } else {
        ReadAttribute(project, line);
    }
}

void CheckReference(ReadProject& project, const ReadObject& object, const std::string& name, const QString& value) {
    const auto rule = kTargets.find(object.className + "." + name);
    if (rule == kTargets.end()) return;
    const std::string where = object.className + "." + std::to_string(object.id) + " " + name + " ";
    const auto id = static_cast<std::size_t>(value.toInt());
    if (id < 1 || id > project.objects.size()) {
        project.faults += where + "refers to nothing: " + value.toStdString() + "\n";
        return;
    }
    const std::string& target = project.objects[id - 1].className;
    if ((" " + rule->second + " ").find(" " + target + " ") == std::string::npos)
        project.faults += where + "refers to a " + target + "\n";
}

} // namespace

std::vector<QString> ReadObject::All(const std::string& name) const {
    std::vector<QString> values;
    for (const auto& [each, value] : attributes)
        if (each == name) values.push_back(value);
    return values;
}

QString ReadObject::One(const std::string& name) const {
    const std::vector<QString> values = All(name);
    return values.size() == 1 ? values.front() : QString();
}

std::vector<const ReadObject*> ReadProject::Of(const std::string& className) const {
    std::vector<const ReadObject*> found;
    for (const ReadObject& each : objects)
        if (each.className == className) found.push_back(&each);
    return found;
}

const ReadObject& ReadProject::Target(const ReadObject& from, const std::string& name) const {
    return At(from.One(name).toInt());
}

ReadProject Read(const QByteArray& bytes, const char* page) {
    ReadProject project;
    QStringList lines = LinesOf(bytes, page, project.faults);
    if (lines.takeFirst() != QLatin1String("/3.0")) project.faults += "no version\n";
    bool open = false;
    for (const QString& line : lines)
        ReadLine(project, line, open);
    if (open) project.faults += "an object without an end\n";
    for (std::size_t i = 0; i < project.objects.size(); ++i)
        if (project.objects[i].id != static_cast<int>(i) + 1)
            project.faults +=
                "number " + std::to_string(project.objects[i].id) + " at place " + std::to_string(i + 1) + "\n";
    for (const ReadObject& object : project.objects)
        for (const auto& [name, value] : object.attributes)
            CheckReference(project, object, name, value);
    return project;
}

} // namespace tessaro::test
