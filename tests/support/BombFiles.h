#pragma once

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QtEndian>

#include <gtest/gtest.h>

namespace tessaro::test {

/// Writes a zipped workbook of a megabyte whose only sheet unpacks to a gigabyte.
inline void WriteZipBomb(const QString& file) {
    const QString script =
        QStringLiteral("import sys, zipfile\n"
                       "with zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_DEFLATED, compresslevel=1) as book:\n"
                       "    book.writestr('mimetype', 'application/vnd.oasis.opendocument.spreadsheet')\n"
                       "    with book.open('content.xml', 'w', force_zip64=True) as sheet:\n"
                       "        for part in range(1024):\n"
                       "            sheet.write(b' ' * (1 << 20))\n");
    ASSERT_EQ(QProcess::execute(QStringLiteral("/usr/bin/python3"), {QStringLiteral("-c"), script, file}), 0);
}

/// The check that ends a part of a picture of the PNG kind.
inline quint32 CheckOfPng(const QByteArray& part) {
    quint32 check = 0xFFFFFFFFU;
    for (const char byte : part) {
        check ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit)
            check = (check >> 1) ^ ((check & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return ~check;
}

/// A workbook's bytes with its first picture said to be 30,000 pixels wide and high: gigabytes when it is drawn.
[[nodiscard]] inline QByteArray WithHugePicture(QByteArray workbook) {
    constexpr qsizetype kHead = 17; // its name, the sizes, and five bytes of what the pixels are
    const qsizetype at = workbook.indexOf("IHDR");
    EXPECT_GT(at, 0);
    char* head = workbook.data() + at;
    for (const int place : {4, 8})
        qToBigEndian<quint32>(30000, head + place);
    qToBigEndian<quint32>(CheckOfPng(QByteArray(head, kHead)), head + kHead);
    return workbook;
}

/// Most memory that a process has used so far, in megabytes; 0 for one that doesn't run.
[[nodiscard]] inline qint64 PeakMemoryOf(qint64 processId) {
    QFile status(QStringLiteral("/proc/%1/status").arg(processId));
    if (processId <= 0 || !status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:")) return line.mid(6).simplified().split(' ').front().toLongLong() / 1024;
    return 0;
}

} // namespace tessaro::test
