#include "layers/EncryptShape.h"

#include "layers/LayerReader.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "support/ShapelibFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessaro {

namespace {

class EncryptShapeTest : public testing::Test {
  protected:
    EncryptShapeTest() {
        TempFolder = folder_.path();
        MapFilesFolder = folder_.filePath(QStringLiteral("MData_/MFiles_"));
        SetSetting(QStringLiteral("ENCRYPT_DECRYPT_FILES"), QStringLiteral("True"));
        test::WriteShapes(folder_.filePath(QStringLiteral("layer")), SHPT_POLYGON,
                          {{{{0, 0}, {0, 9}, {9, 9}, {0, 0}}}});
    }
    ~EncryptShapeTest() override {
        ForgetSettings();
        ResetSessionValues();
    }
    EncryptShapeTest(const EncryptShapeTest&) = delete;
    EncryptShapeTest& operator=(const EncryptShapeTest&) = delete;

    [[nodiscard]] QString Path() const { return folder_.filePath(QStringLiteral("layer.shp")); }
    [[nodiscard]] QByteArray Bytes(const QString& path) const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void Write(const QByteArray& bytes) const {
        QFile file(Path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QTemporaryDir folder_;
};

} // namespace

TEST_F(EncryptShapeTest, ChangesOnlyFilesThatTheModeIsFor) {
    const QByteArray plain = Bytes(Path());
    QByteArray marked = plain;
    marked.replace(4, 4, QByteArray("\1\0\0\0", 4));
    QByteArray scrambled = marked;
    scrambled.replace(0, 4, QByteArray::fromHex("0000d9f5"));
    const struct {
        QByteArray before;
        char mode;
        QByteArray after;
    } cases[] = {{marked, 'E', scrambled},
                 {scrambled, 'D', marked},
                 {scrambled, 'E', scrambled},
                 {marked, 'D', marked},
                 {plain, 'E', plain},
                 {plain, 'D', plain},
                 {marked.left(7), 'E', marked.left(7)},
                 {{}, 'D', {}},
                 {marked, 'X', marked},
                 {marked.left(11), 'E', scrambled.left(11)}};
    for (const auto& c : cases) {
        Write(c.before);
        EXPECT_EQ(EncryptShape(c.mode, Path()), c.before != c.after) << c.mode;
        EXPECT_EQ(Bytes(Path()).toHex(), c.after.toHex()) << c.mode;
    }
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(), 2) << "no work file stays";
    EXPECT_FALSE(EncryptShape('E', folder_.filePath(QStringLiteral("none.shp"))));
    Write(marked);
    SetSetting(QStringLiteral("ENCRYPT_DECRYPT_FILES"), QStringLiteral("False"));
    EXPECT_FALSE(EncryptShape('E', Path()));
    EXPECT_EQ(Bytes(Path()), marked);
}

TEST_F(EncryptShapeTest, AWorkingCopyIsRestoredAndTheSourceStays) {
    QByteArray bytes = Bytes(Path());
    bytes.replace(0, 8, QByteArray::fromHex("0000d9f501000000"));
    Write(bytes);
    QFile codePage(folder_.filePath(QStringLiteral("LAYER.CPG")));
    ASSERT_TRUE(codePage.open(QIODevice::WriteOnly));
    codePage.write("UTF-8");
    codePage.close();
    ASSERT_TRUE(MakeMapFilesFolder());
    const QString copy = WorkingCopy(folder_.filePath(QStringLiteral("Layer.SHP")));
    EXPECT_EQ(QDir(MapFilesFolder).entryList(QDir::Files).join(QLatin1Char(' ')).toLower().toStdString(),
              "layer.cpg layer.shp layer.shx");
    EXPECT_EQ(Bytes(copy).left(4).toHex(), "0000270a");
    EXPECT_EQ(Bytes(Path()), bytes);
    EXPECT_EQ(ReadLayer(copy).layer->features.size(), 1U);
    ASSERT_TRUE(MakeMapFilesFolder());
    EXPECT_TRUE(QDir(MapFilesFolder).entryList(QDir::Files).isEmpty());
    EXPECT_TRUE(WorkingCopy(folder_.filePath(QStringLiteral("none.shp"))).isEmpty());
}

} // namespace tessaro
