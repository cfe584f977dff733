#pragma once

#include "controls/FileDialogs.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Presentations.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "support/TestSession.h"

#include <QDir>

namespace tessaro::test {

/// A session with all texts of the product and an empty gallery folder.
class GallerySession : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        StartSample();
        UseLanguage(QStringLiteral("en"));
        QDir().mkpath(gallery_);
        SetGalleryFolder(gallery_);
    }
    void TearDown() override {
        SetFileAnswerer({});
        SessionTest::TearDown();
    }

    [[nodiscard]] const QString& Gallery() const { return gallery_; }
    void MakeFolder(const QString& name) const { QDir().mkpath(gallery_ + QLatin1Char('/') + name); }
    void MakeFile(const QString& name, const QByteArray& contents) const {
        QFile file(gallery_ + QLatin1Char('/') + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size());
    }
    [[nodiscard]] bool HasFile(const QString& name) const { return QFile::exists(gallery_ + QLatin1Char('/') + name); }

  private:
    QString gallery_ = Folder() + QStringLiteral("/Gallery");
};

} // namespace tessaro::test
