#include "layers/LayerReader.h"
#include "layers/LayerStack.h"
#include "layers/MapPicture.h"

#include <QGuiApplication>

#include <cstddef>
#include <cstdint>

/// Any bytes as a layer: the first six tell how long index, table and code page are, the rest is the main file. What is
/// read holds no more than the file, and can be drawn and asked.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaro;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char program[] = "fuzz";
    static char* arguments[] = {program, nullptr};
    static const QGuiApplication application(count, arguments);
    constexpr std::size_t kHead = 6;
    if (size < kHead) return 0;
    const QByteArray bytes(reinterpret_cast<const char*>(data) + kHead, static_cast<qsizetype>(size - kHead));
    std::map<std::string, QByteArray> files;
    qsizetype place = 0;
    for (const std::size_t each : {0U, 1U, 2U}) {
        const qsizetype length = data[2 * each] * 256 + data[2 * each + 1];
        constexpr const char* kEndings[] = {"shx", "dbf", "cpg"};
        if (length > 0) files[kEndings[each]] = bytes.mid(place, length);
        place += length;
    }
    files["shp"] = bytes.mid(place);
    LayerReading reading = ReadLayerFiles(std::move(files), QStringLiteral("layer"));
    if (reading.layer.has_value() != (reading.fault == LayerFault::None)) std::abort();
    if (!reading.layer) return 0;
    if (reading.layer->points.size() * 16 > size) std::abort();
    LayerStack stack;
    stack.Add(std::move(*reading.layer), {});
    LayerLabels labels;
    const MapLayer& layer = stack.At(0).data;
    for (int i = 0; i < static_cast<int>(layer.features.size()); ++i)
        labels.texts.push_back(layer.Text(i, layer.NameField()));
    stack.SetLabels(0, labels);
    (void)MapImage(stack, stack.FullExtent(), {64, 64}, 1);
    (void)MapImage(stack, {0, 0, 1, 1}, {64, 64}, 2);
    const MapBox& box = stack.FullExtent();
    (void)stack.At(0).data.SearchByDistance({box.left, box.bottom}, box.Width() / 2);
    return 0;
}
