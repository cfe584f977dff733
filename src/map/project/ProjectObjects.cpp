#include "map/project/ProjectObjects.h"

#include "map/AnsiText.h"

namespace tessaro {

namespace {

constexpr qsizetype kLongestLine = 512;
constexpr int kDecimals = 14;

QString Escaped(const QString& text) {
    QString escaped;
    for (const QChar c : text) {
        if (c == QLatin1Char('\n'))
            escaped += QLatin1String("\\n");
        else if (c == QLatin1Char('\r'))
            escaped += QLatin1String("\\r");
        else if (c == QLatin1Char('\t'))
            escaped += QLatin1String("\\t");
        else if (c == QLatin1Char('"') || c == QLatin1Char('\\'))
            escaped += QLatin1Char('\\') + QString(c);
        else if (c >= QLatin1Char(' '))
            escaped += c;
    }
    return escaped;
}

/// A line in blocks of 512 bytes. A reader goes on after each full block, so a line must not end with one: it gets a
/// blank more.
void AddLine(QByteArray& bytes, QByteArray line) {
    if (line.size() % kLongestLine == 0) line += ' ';
    for (qsizetype from = 0; from < line.size(); from += kLongestLine)
        bytes += line.mid(from, kLongestLine) + "\r\n";
}

} // namespace

ObjectRef ProjectObjects::Announce() {
    numbers_.push_back(0);
    return {static_cast<int>(numbers_.size()) - 1};
}

void ProjectObjects::Begin(ObjectRef object, const char* className) {
    numbers_[static_cast<std::size_t>(object.place)] = ++begun_;
    if (begun_ > 1) {
        lines_.push_back({QStringLiteral(")"), {}});
        lines_.push_back({QStringLiteral(" "), {}});
    }
    lines_.push_back({QLatin1Char('(') + QLatin1String(className) + QLatin1Char('.'), object});
}

ObjectRef ProjectObjects::Begin(const char* className) {
    const ObjectRef object = Announce();
    Begin(object, className);
    return object;
}

void ProjectObjects::Put(const char* attribute) {
    lines_.push_back({QStringLiteral("      ") + QLatin1String(attribute), {}});
}

void ProjectObjects::Put(const char* label, const QString& text) {
    Put(label);
    lines_.back().text += QLatin1Char('"') + Escaped(text) + QLatin1Char('"');
}

void ProjectObjects::Put(const char* label, int number) {
    Put(label);
    lines_.back().text += QString::number(number);
}

void ProjectObjects::Put(const char* label, double number) {
    Put(label);
    lines_.back().text += QString::number(number, 'f', kDecimals);
}

void ProjectObjects::Put(const char* label, ObjectRef object) {
    Put(label);
    lines_.back().object = object;
}

QByteArray ProjectObjects::Bytes(int charset) const {
    QByteArray bytes = "/3.0\r\n";
    for (const Line& line : lines_) {
        QByteArray text = PlainAnsiBytes(line.text, charset);
        if (line.object.place >= 0) text += QByteArray::number(NumberOf(line.object));
        AddLine(bytes, text);
    }
    return bytes + ")\r\n \r\n";
}

} // namespace tessaro
