#pragma once

#include "map/MapLayerList.h"
#include "map/MapTest.h"
#include "support/ShapelibFiles.h"

#include <QDir>

#include <sys/stat.h>

namespace tessaro::test {

/// A folder that can't be written to while it lives; root could all the same, so such a machine skips the test.
class ReadOnlyFolder final {
  public:
    explicit ReadOnlyFolder(const QString& path) : path_(path.toLocal8Bit()) { ::chmod(path_.constData(), 0555); }
    ~ReadOnlyFolder() { ::chmod(path_.constData(), 0755); }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

  private:
    QByteArray path_;
};

/// A folder of maps with small layers made by the independent library.
class CustomTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        maps_ = JoinPath({AppPath, QStringLiteral("Maps")});
        ASSERT_TRUE(QDir().mkpath(maps_));
    }

    /// A layer with a table of the fields and rows given, one feature for each row. Feature i lies at (10 i, i).
    QString MakeLayer(const QString& base, int type, const std::vector<const char*>& fields,
                      const std::vector<std::vector<std::string>>& rows, const QString& folder = {}) const {
        const QString path = JoinPath({folder.isEmpty() ? maps_ : folder, base});
        std::vector<Rings> shapes;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const double x = 10 * static_cast<double>(i);
            const auto y = static_cast<double>(i);
            const Ring square{{x, y}, {x, y + 1}, {x + 1, y + 1}, {x + 1, y}, {x, y}};
            shapes.push_back({type == SHPT_POINT ? Ring{{x, y}} : square});
        }
        WriteShapes(path, type, shapes);
        WriteTable(path, "UTF-8", fields, rows);
        return path + QStringLiteral(".shp");
    }
    static StackedLayer& AddTo(LayerStack& map, QString path, const char* tag) {
        QString reason;
        EXPECT_TRUE(AddLayer(map, path, QLatin1String(tag), {}, reason)) << reason.toStdString();
        return map.At(map.Count() - 1);
    }

    QString maps_;
};

} // namespace tessaro::test
