#include "platform/IniFile.h"

#include <QList>

#define SI_NO_CONVERSION // UTF-8 in, UTF-8 out
#include <SimpleIni.h>
#include <string>

namespace tessaro {

struct IniFile::Impl {
    CSimpleIniA ini{/*a_bIsUtf8=*/true, /*a_bMultiKey=*/false, /*a_bMultiLine=*/false};
};

IniFile::IniFile() : impl_(std::make_unique<Impl>()) {
    impl_->ini.SetSpaces(false);
}
IniFile::~IniFile() = default;
IniFile::IniFile(IniFile&&) noexcept = default;
IniFile& IniFile::operator=(IniFile&&) noexcept = default;

IniFile IniFile::Parse(const QByteArray& contents) {
    IniFile file;
    // A Chr(0) would end the whole text for the parser; it ends its line only.
    QByteArray text;
    text.reserve(contents.size() + 1);
    for (const QByteArray& line : contents.split('\n'))
        text += QByteArray(line.constData(), qstrnlen(line.constData(), line.size())) + '\n';
    if (!text.isEmpty()) file.impl_->ini.LoadData(text.constData(), static_cast<std::size_t>(text.size()));
    return file;
}

QByteArray IniFile::Contents() const {
    std::string text;
    impl_->ini.Save(text);
    return QByteArray(text.data(), static_cast<qsizetype>(text.size()));
}

bool IniFile::HasSection(const QString& section) const {
    return impl_->ini.GetSection(section.toUtf8().constData()) != nullptr;
}

QString IniFile::ReadUncut(const QString& section, const QString& key) const {
    const char* value = impl_->ini.GetValue(section.toUtf8().constData(), key.toUtf8().constData(), nullptr);
    return value == nullptr ? QString() : QString::fromUtf8(value);
}

QString IniFile::Read(const QString& section, const QString& key) const {
    return ReadUncut(section, key).left(kLongestValue);
}

void IniFile::Write(const QString& section, const QString& key, const QString& value) {
    QString line = value;
    line.remove(QChar(0));
    line.replace(QLatin1String("\r\n"), QLatin1String(" ")).replace(QLatin1Char('\r'), QLatin1Char(' '));
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    impl_->ini.SetValue(section.toUtf8().constData(), key.toUtf8().constData(), line.toUtf8().constData());
}

} // namespace tessaro
