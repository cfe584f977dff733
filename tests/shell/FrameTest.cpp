#include "shell/FrameTest.h"

#include "TestPlaces.h"
#include "platform/SingleInstance.h"
#include "session/Session.h"
#include "support/SampleApplication.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStackedWidget>

namespace tessaro::test {

namespace {

void ReplaceLine(const QString& path, const QString& key, const QString& value) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(file.readAll());
    file.close();
    const QRegularExpression line(QStringLiteral("^%1=.*$").arg(QRegularExpression::escape(key)),
                                  QRegularExpression::MultilineOption);
    ASSERT_TRUE(text.contains(line)) << key.toStdString();
    text.replace(line, key + QLatin1Char('=') + value);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
}

} // namespace

FrameTest::FrameTest() {
    MakeSampleApplication(Application());
}

FrameTest::~FrameTest() {
    window.reset();
}

QString FrameTest::Application() const {
    return Folder() + QLatin1String("/Application");
}

QString FrameTest::SampleDatabase() const {
    return Application() + QLatin1String("/Data/Sample.mdb");
}

void FrameTest::SetPreference(const QString& key, const QString& value) {
    ReplaceLine(Application() + QLatin1String("/Bin/Template/Pref.ini"), key, value);
}

void FrameTest::SetProductSetting(const QString& key, const QString& value) {
    ReplaceLine(Application() + QLatin1String("/TS.ini"), key, value);
}

bool FrameTest::Start() {
    return StartIn(Application());
}

bool FrameTest::StartInstalled() {
    return StartIn(QStringLiteral(TESSARO_INSTALLATION)) && LanguageFiles.size() >= 5 && DatabaseOpen;
}

bool FrameTest::StartIn(QString application) {
    window = std::make_unique<frmMain>();
    SetMessageAnswerer([this](const Message& message) {
        messages << (message.key.isEmpty() ? message.text : message.key);
        return answers.isEmpty() ? CodeOfClosing(message.type) : answers.takeFirst();
    });
    const bool running =
        window->MDIForm_Load(QStringLiteral("/a") + application.replace(QLatin1Char('/'), QLatin1Char('\\')));
    messages.removeAll(QStringLiteral("046")); // whether this machine has a spreadsheet program is not the matter
    return running;
}

bool FrameTest::StartInStages() {
    SetPreference(QStringLiteral("LAST MDB FILE USED"), SampleDatabase());
    SetPreference(QStringLiteral("SKIP THE SPLASH"), QStringLiteral("True"));
    return Start() && CurrentStage == 0;
}

QByteArray FrameTest::PreferencesOnDisk() const {
    QFile file(CacheFolder + QLatin1String("/Pref.ini"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString FrameTest::Address() const {
    return Find<QComboBox>(QStringLiteral("cmbAddress"))->currentText();
}

void FrameTest::Type(const QString& address) {
    Find<QComboBox>(QStringLiteral("cmbAddress"))->setEditText(address);
    window->Databases().SelectDataBase();
}

bool FrameTest::IsEnabled(const QString& name) const {
    return Find(name)->isEnabled();
}

QString FrameTest::Screen() const {
    const QWidget* page = Find<QStackedWidget>(QStringLiteral("stkChildren"))->currentWidget();
    return page ? page->objectName() : QString();
}

void FrameTest::Click(const QString& name) {
    auto* button = Find<QAbstractButton>(name);
    ASSERT_NE(button, nullptr) << name.toStdString();
    button->click();
}

} // namespace tessaro::test
