#include "map/custom/LayerListFile.h"

#include "map/custom/CustomTest.h"
#include "support/FullDisk.h"

#include <QFile>

#include <random>

namespace tessaro::test {

namespace {

constexpr int kWestern = 0;
constexpr int kArabic = 178;

class LayerListFileTest : public CustomTest {
  protected:
    [[nodiscard]] QString ListFile() const { return maps_ + QStringLiteral("/LoadChkSHP.chk"); }
};

} // namespace

TEST_F(LayerListFileTest, HasALineForNameAndFolder) {
    const RememberedLayers layers{{QStringLiteral("Rivers"), {}},
                                  {QStringLiteral("Buffer_a b"), QStringLiteral("/srv/été")}};
    const QByteArray bytes = LayerListBytes(layers, kWestern);
    EXPECT_EQ(bytes, QByteArray("[Detail of Shape file to be Loaded]\r\n2\r\n \r\n"
                                "Layer            : Rivers\r\nLayer Path       : \r\n"
                                "Layer            : Buffer_a b\r\nLayer Path       : /srv/\xE9t\xE9\r\n"));
    EXPECT_EQ(ReadLayerList(bytes, kWestern), layers);
    const RememberedLayers scripts{{QStringLiteral("أنهار"), QStringLiteral("/реки")}};
    for (const int charset : {kWestern, kArabic})
        EXPECT_EQ(ReadLayerList(LayerListBytes(scripts, charset), charset), scripts);
    EXPECT_TRUE(
        ReadLayerList(LayerListBytes({{QStringLiteral("a\nb"), {}}, {{}, {}}, {QStringLiteral("c "), {}}}, 0), 0)
            .empty());
}

TEST_F(LayerListFileTest, ReadsAnyBytes) {
    const struct {
        const char* bytes;
        int layers;
    } cases[] = {{"", 0},
                 {"\n\n\n", 0},
                 {"x\n-3\n \nLayer            : a\nLayer Path       : \n", 0},
                 {"x\nmany\n \nLayer            : a\nLayer Path       : \n", 0},
                 {"x\n2\n \nLayer            : a\nLayer Path       : \nLayer            : b", 1},
                 {"x\n1\n \nLayer            : a\nLayer Path       : \nLayer            : b\nLayer Path       : \n", 1},
                 {"x\n2\n \nshort\nshort\nLayer            : b\n\n", 1},
                 {"x\n2147483647\n \nLayer            : a\nLayer Path       : /f\n", 1}};
    for (const auto& [bytes, layers] : cases)
        EXPECT_EQ(ReadLayerList(bytes, kWestern).size(), static_cast<std::size_t>(layers)) << bytes;
    std::mt19937 random(5);
    const QByteArray good = LayerListBytes({{QStringLiteral("a"), {}}, {QStringLiteral("b"), QStringLiteral("/x")}}, 0);
    for (int turn = 0; turn < 2000; ++turn) {
        QByteArray bytes = good.left(static_cast<qsizetype>(random() % static_cast<unsigned>(good.size() + 1)));
        for (int i = 0; i < 3 && !bytes.isEmpty(); ++i)
            bytes[static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()))] = static_cast<char>(random());
        for (const RememberedLayer& each : ReadLayerList(bytes, kArabic))
            EXPECT_FALSE(each.name.isEmpty());
    }
}

TEST_F(LayerListFileTest, LiesInTheFolderOfMaps) {
    EXPECT_TRUE(LoadLayerList().empty());
    const RememberedLayers layers{{QStringLiteral("Rivers"), {}}};
    ASSERT_TRUE(SaveLayerList(layers));
    EXPECT_EQ(LoadLayerList(), layers);
    EXPECT_TRUE(QFile::exists(ListFile()));
    EXPECT_EQ(FileOf(layers[0]), QString());
    const QString file = MakeLayer(QStringLiteral("rivers"), SHPT_POINT, {"ID_"}, {{"1"}});
    EXPECT_EQ(FileOf(layers[0]), file);
    EXPECT_EQ(RememberedOf(file), (RememberedLayer{QStringLiteral("rivers"), {}}));
    EXPECT_EQ(RememberedOf(QStringLiteral("/srv/a.b.shp")),
              (RememberedLayer{QStringLiteral("a.b"), QStringLiteral("/srv")}));
    {
        const FullDisk full(20);
        EXPECT_FALSE(SaveLayerList({{QStringLiteral("Roads"), {}}, {QStringLiteral("Towns"), {}}}));
    }
    EXPECT_EQ(LoadLayerList(), layers) << "the former list";
    ASSERT_TRUE(SaveLayerList({}));
    EXPECT_FALSE(QFile::exists(ListFile()));
    EXPECT_TRUE(SaveLayerList({}));
}

TEST_F(LayerListFileTest, TheUsersStandsBesideOneThatCantBeWritten) {
    ASSERT_TRUE(SaveLayerList({{QStringLiteral("Shipped"), {}}}));
    QFile::setPermissions(ListFile(), QFile::ReadOwner);
    const ReadOnlyFolder locked(maps_);
    if (QFileInfo(ListFile()).isWritable()) GTEST_SKIP() << "root may write everywhere";
    const auto shipped = ReadWholeFile(ListFile());
    const RememberedLayers own{{QStringLiteral("Own"), {}}};
    ASSERT_TRUE(SaveLayerList(own));
    EXPECT_EQ(LoadLayerList(), own);
    ASSERT_TRUE(SaveLayerList({}));
    EXPECT_TRUE(LoadLayerList().empty()) << "the installation's list must not come back";
    EXPECT_EQ(ReadWholeFile(ListFile()), shipped);
}

} // namespace tessaro::test
