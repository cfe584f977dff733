#include "Figures.h"
#include "layers/LayerReader.h"
#include "layers/MapPicture.h"

#include <QElapsedTimer>
#include <QPainter>

#include <algorithm>

namespace tessaro::bench {

namespace {

const QSize kPicture(1280, 800);
const MapBox kMainland{-125, 24, -66, 50};

LayerStack StackOf(const QString& installation, const char* file) {
    LayerStack stack;
    LayerReading reading = ReadLayer(installation + QStringLiteral("/Maps/") + QLatin1String(file));
    if (!reading.layer) return stack;
    LayerSymbols& symbols = stack.Add(std::move(*reading.layer), QStringLiteral("Data")).symbols;
    symbols.symbols.assign(5, LayerSymbol());
    for (int i = 0; i < 5; ++i)
        symbols.symbols[static_cast<std::size_t>(i)].color = QColor(255 - 40 * i, 250 - 30 * i, 200 - 40 * i);
    for (std::size_t i = 0; i < stack.At(0).data.features.size(); ++i)
        symbols.ofFeature.push_back(static_cast<int>(i % 5));
    return stack;
}

double MillisecondsToDraw(const LayerStack& stack, const MapBox& extent, QImage& image) {
    QElapsedTimer clock;
    clock.start();
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintMap(painter, stack, ViewOf(stack, extent, image.size()), 1);
    painter.end();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

/// The median of redrawing after the map was moved by some pixels.
double AfterPan(const LayerStack& stack, MapBox extent) {
    QImage image(kPicture, QImage::Format_RGB32);
    (void)MillisecondsToDraw(stack, extent, image);
    std::vector<double> times;
    for (int i = 0; i < 31; ++i) {
        const double step = (i % 2 == 0 ? 0.01 : -0.01) * extent.Width();
        extent.left += step;
        extent.right += step;
        times.push_back(MillisecondsToDraw(stack, extent, image));
    }
    std::nth_element(times.begin(), times.begin() + 15, times.end());
    return times[15];
}

/// The median of reading a layer and drawing it for the first time.
double FirstPicture(const QString& installation, const char* file) {
    std::vector<double> times;
    for (int i = 0; i < 11; ++i) {
        QElapsedTimer clock;
        clock.start();
        const LayerStack stack = StackOf(installation, file);
        QImage image(kPicture, QImage::Format_RGB32);
        (void)MillisecondsToDraw(stack, kMainland, image);
        times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    std::nth_element(times.begin(), times.begin() + 5, times.end());
    return times[5];
}

double Identify(const LayerStack& stack) {
    const MapLayer& layer = stack.At(0).data;
    return Milliseconds(
        [&layer] {
            static int turn = 0;
            const QPointF place(-120 + turn % 50, 30 + turn % 15);
            ++turn;
            (void)layer.FeatureAt(place, 0);
            (void)layer.SearchByDistance(place, 1);
        },
        200);
}

} // namespace

void MeasureLayers(Report& report, const QString& installation) {
    const LayerStack counties = StackOf(installation, "USA_Counties.shp");
    const LayerStack world = StackOf(installation, "World.shp");
    if (counties.Count() == 0 || world.Count() == 0)
        return report.Bound("map layers of the installation", 1, 0, "missing");
    report.Bound(
        "map: redraw of 3,231 counties after a pan, median", [&] { return AfterPan(counties, kMainland); }, 16, "ms");
    report.Bound(
        "map: 3,231 counties read and drawn the first time, median",
        [&] { return FirstPicture(installation, "USA_Counties.shp"); }, 60, "ms");
    report.Bound(
        "map: redraw of 241 countries after a pan, median", [&] { return AfterPan(world, world.FullExtent()); }, 8,
        "ms");
    report.Bound(
        "map: what lies under the pointer, 3,231 counties", [&] { return Identify(counties); }, 2, "ms");
}

} // namespace tessaro::bench
