#include "Figures.h"
#include "layers/LayerReader.h"
#include "layers/MapPicture.h"
#include "map/custom/RenderLabels.h"

#include <QPainter>

#include <algorithm>

namespace tessaro::bench {

namespace {

const QSize kPicture(1280, 800);
const MapBox kMainland{-125, 24, -66, 50};

template <class Work> double ProcessorMilliseconds(Work work) {
    const double start = bench::ProcessorMilliseconds();
    work();
    return bench::ProcessorMilliseconds() - start;
}

double Median(std::vector<double> times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

/// Labels with the names of a layer's features, as maps have them at first.
LayerLabels NamesOf(const MapLayer& layer, bool overlaps) {
    LayerLabels labels = FirstLabels();
    labels.on = true;
    labels.overlaps = overlaps;
    labels.font.setPointSize(8);
    for (int i = 0; i < static_cast<int>(layer.features.size()); ++i)
        labels.texts.push_back(layer.Text(i, layer.NameField()));
    return labels;
}

double DrawLabels(const LayerStack& stack, const MapBox& extent, QImage& image) {
    QPainter painter(&image);
    return ProcessorMilliseconds([&] {
        PaintLabels(painter, {{&stack.At(0).labels, nullptr}}, ViewOf(stack, extent, image.size()), 1);
    });
}

double Placed(const MapLayer& counties) {
    QImage image(kPicture, QImage::Format_RGB32);
    std::vector<double> times;
    for (int i = 0; i < 11; ++i) {
        LayerStack stack;
        stack.Add(counties, {});
        LayerLabels labels = NamesOf(counties, false);
        times.push_back(ProcessorMilliseconds([&] { stack.SetLabels(0, std::move(labels)); }));
        times.back() += DrawLabels(stack, kMainland, image);
    }
    return Median(times);
}

double Redrawn(const MapLayer& counties, bool overlaps) {
    LayerStack stack;
    stack.Add(counties, {});
    stack.SetLabels(0, NamesOf(counties, overlaps));
    QImage image(kPicture, QImage::Format_RGB32);
    MapBox extent = kMainland;
    (void)DrawLabels(stack, extent, image);
    std::vector<double> times;
    for (int i = 0; i < 31; ++i) {
        const double step = (i % 2 == 0 ? 0.01 : -0.01) * extent.Width();
        extent.left += step;
        extent.right += step;
        times.push_back(DrawLabels(stack, extent, image));
    }
    return Median(times);
}

} // namespace

void MeasureLabels(Report& report, const QString& installation) {
    const LayerReading counties = ReadLayer(installation + QStringLiteral("/Maps/USA_Counties.shp"));
    if (!counties.layer) return report.Bound("map layers of the installation", 1, 0, "missing");
    report.Bound(
        "map: labels of 3,231 counties placed, processor time, median", [&] { return Placed(*counties.layer); }, 60,
        "ms");
    report.Bound(
        "map: labels of 3,231 counties redrawn after a pan, processor time, median",
        [&] { return Redrawn(*counties.layer, false); }, 20, "ms");
    report.Bound(
        "map: the same with every label, one over another", [&] { return Redrawn(*counties.layer, true); }, 20, "ms");
}

} // namespace tessaro::bench
