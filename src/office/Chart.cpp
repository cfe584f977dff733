#include "office/Chart.h"

#include "office/Convert.h"
#include "office/Document.h"
#include "office/FormPlaces.h"
#include "office/Looks.h"
#include "office/Range.h"
#include "office/SheetAccess.h"
#include "office/Transfer.h"

#include <algorithm>
#include <com/sun/star/beans/XMultiPropertySet.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/chart/ChartAxisAssign.hpp>
#include <com/sun/star/chart/ChartDataCaption.hpp>
#include <com/sun/star/chart/ChartDataRowSource.hpp>
#include <com/sun/star/chart/ChartLegendPosition.hpp>
#include <com/sun/star/chart/ChartSymbolType.hpp>
#include <com/sun/star/chart/DataLabelPlacement.hpp>
#include <com/sun/star/chart/MissingValueTreatment.hpp>
#include <com/sun/star/chart/X3DDisplay.hpp>
#include <com/sun/star/chart/XAxisXSupplier.hpp>
#include <com/sun/star/chart/XAxisYSupplier.hpp>
#include <com/sun/star/chart/XChartDocument.hpp>
#include <com/sun/star/chart/XSecondAxisTitleSupplier.hpp>
#include <com/sun/star/chart/XTwoAxisYSupplier.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/document/XEmbeddedObjectSupplier.hpp>
#include <com/sun/star/drawing/FillStyle.hpp>
#include <com/sun/star/drawing/LineStyle.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/table/XTableChart.hpp>
#include <com/sun/star/table/XTableChartsSupplier.hpp>
#include <functional>
#include <optional>

namespace tessaro::office {

namespace {

using com::sun::star::beans::XPropertySet;
using com::sun::star::chart::XChartDocument;
using com::sun::star::drawing::XShape;
using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using com::sun::star::uno::UNO_QUERY;
using Model = Document::Model;

constexpr const char* kChartClass = "12dcae26-281f-416f-a234-c3086127382e";

auto ChartsOf(const Model& model, int sheet) {
    return Need<com::sun::star::table::XTableChartsSupplier>(SheetOf(model, sheet))->getCharts();
}

/// The drawn objects of the sheet that are charts, in their order.
std::vector<Reference<XShape>> ChartShapes(const Model& model, int sheet) {
    std::vector<Reference<XShape>> shapes;
    const auto page = Need<com::sun::star::drawing::XDrawPageSupplier>(SheetOf(model, sheet))->getDrawPage();
    for (sal_Int32 place = 0; place < page->getCount(); ++place) {
        Reference<XShape> shape;
        page->getByIndex(place) >>= shape;
        if (!shape.is() || shape->getShapeType() != "com.sun.star.drawing.OLE2Shape") continue;
        rtl::OUString kind;
        Need<XPropertySet>(shape)->getPropertyValue("CLSID") >>= kind;
        if (FromUno(kind).compare(QLatin1String(kChartClass), Qt::CaseInsensitive) == 0) shapes.push_back(shape);
    }
    return shapes;
}

Reference<XShape> ShapeOf(const Model& model, int sheet, int number) {
    const auto found = LookAgain([&]() -> std::optional<Reference<XShape>> {
        const auto shapes = ChartShapes(model, sheet);
        if (number < 1 || number > static_cast<int>(shapes.size())) return std::nullopt;
        return shapes[static_cast<std::size_t>(number - 1)];
    });
    if (found) return *found;
    throw Error(Failure::Call, QStringLiteral("there is no chart %1").arg(number));
}

Reference<XChartDocument> ChartOf(const Model& model, int sheet, int number) {
    const Reference<XPropertySet> shape = Need<XPropertySet>(ShapeOf(model, sheet, number));
    const auto loaded = LookAgain([&]() -> std::optional<Reference<XChartDocument>> {
        Reference<com::sun::star::uno::XInterface> inner;
        shape->getPropertyValue("Model") >>= inner;
        const Reference<XChartDocument> chart(inner, com::sun::star::uno::UNO_QUERY);
        return chart.is() ? std::optional(chart) : std::nullopt;
    });
    if (loaded) return *loaded;
    throw Error(Failure::Call, QStringLiteral("chart %1 has no content").arg(number));
}

const char* DiagramOf(ChartKind kind) {
    switch (kind) {
    case ChartKind::Column:
    case ChartKind::Bar:
        return "com.sun.star.chart.BarDiagram";
    case ChartKind::Line:
        return "com.sun.star.chart.LineDiagram";
    case ChartKind::Pie:
        return "com.sun.star.chart.PieDiagram";
    case ChartKind::Area:
        return "com.sun.star.chart.AreaDiagram";
    case ChartKind::Scatter:
        return "com.sun.star.chart.XYDiagram";
    }
    return "com.sun.star.chart.BarDiagram";
}

void SetDiagram(const Reference<XChartDocument>& chart, ChartKind kind) {
    const auto factory = Need<com::sun::star::lang::XMultiServiceFactory>(chart);
    const auto diagram = Need<com::sun::star::chart::XDiagram>(factory->createInstance(Ascii(DiagramOf(kind))));
    chart->setDiagram(diagram);
    // The kind's "vertical" means bars that lie.
    if (kind == ChartKind::Column || kind == ChartKind::Bar)
        Need<XPropertySet>(chart->getDiagram())->setPropertyValue("Vertical", Any(kind == ChartKind::Bar));
}

void SetFontOf(const Reference<XPropertySet>& part, const QString& name, double points) {
    if (!part.is()) return;
    const PropertyList list =
        ListOf(FontProperties({.fontName = name, .fontSize = points}, [](int /*slot*/) { return 0; }));
    Need<com::sun::star::beans::XMultiPropertySet>(part)->setPropertyValues(list.names, list.values);
}

/// The axis along the points and that of the values; empty for one that this kind of chart doesn't have.
Reference<XPropertySet> AlongAxis(const Reference<XChartDocument>& chart) {
    const Reference<com::sun::star::chart::XAxisXSupplier> x(chart->getDiagram(), UNO_QUERY);
    return x.is() ? x->getXAxis() : Reference<XPropertySet>();
}

Reference<XPropertySet> ValueAxis(const Reference<XChartDocument>& chart) {
    const Reference<com::sun::star::chart::XAxisYSupplier> y(chart->getDiagram(), UNO_QUERY);
    return y.is() ? y->getYAxis() : Reference<XPropertySet>();
}

bool Shows(const Reference<XChartDocument>& chart, const char* part) {
    bool shown = false;
    const auto diagram = Need<XPropertySet>(chart->getDiagram());
    return diagram->getPropertySetInfo()->hasPropertyByName(Ascii(part)) &&
           (diagram->getPropertyValue(Ascii(part)) >>= shown) && shown;
}

/// All axes that this kind of chart has.
std::vector<Reference<XPropertySet>> AxesOf(const Reference<XChartDocument>& chart) {
    std::vector<Reference<XPropertySet>> axes{AlongAxis(chart), ValueAxis(chart)};
    const Reference<com::sun::star::chart::XTwoAxisYSupplier> second(chart->getDiagram(), UNO_QUERY);
    if (second.is() && Shows(chart, "HasSecondaryYAxis")) axes.push_back(second->getSecondaryYAxis());
    std::erase_if(axes, [](const Reference<XPropertySet>& axis) { return !axis.is(); });
    return axes;
}

/// The titles of axes, empty for one that isn't shown: along, values, other side.
std::vector<Reference<XPropertySet>> AxisTitlesOf(const Reference<XChartDocument>& chart) {
    std::vector<Reference<XPropertySet>> titles(3);
    const auto diagram = chart->getDiagram();
    const Reference<com::sun::star::chart::XAxisXSupplier> x(diagram, UNO_QUERY);
    const Reference<com::sun::star::chart::XAxisYSupplier> y(diagram, UNO_QUERY);
    const Reference<com::sun::star::chart::XSecondAxisTitleSupplier> other(diagram, UNO_QUERY);
    if (x.is() && Shows(chart, "HasXAxisTitle")) titles[0] = Need<XPropertySet>(x->getXAxisTitle());
    if (y.is() && Shows(chart, "HasYAxisTitle")) titles[1] = Need<XPropertySet>(y->getYAxisTitle());
    if (other.is() && Shows(chart, "HasSecondaryYAxisTitle"))
        titles[2] = Need<XPropertySet>(other->getSecondYAxisTitle());
    return titles;
}

void SetNumberFormat(const Reference<XChartDocument>& chart, const Reference<XPropertySet>& axis, const QString& code) {
    if (!axis.is()) return;
    axis->setPropertyValue("LinkNumberFormatToSource", Any(false));
    axis->setPropertyValue("NumberFormat", Any(NumberFormatKey(Need<com::sun::star::frame::XModel>(chart), code)));
}

void SetAxisTitle(const Reference<XPropertySet>& diagram, const char* has, const Reference<XShape>& title,
                  const QString& text) {
    diagram->setPropertyValue(Ascii(has), Any(!text.isEmpty()));
    if (!text.isEmpty()) Need<XPropertySet>(title)->setPropertyValue("String", Any(ToUno(text)));
}

} // namespace

Chart Chart::Add(const std::shared_ptr<Document>& document, int sheet, ChartKind kind, const Range& data,
                 bool columnHeaders, bool rowHeaders, const QRectF& place) {
    int number = 0;
    document->Run([&](const Model& model) {
        const auto charts = ChartsOf(model, sheet);
        number = static_cast<int>(ChartShapes(model, sheet).size()) + 1;
        com::sun::star::uno::Sequence<com::sun::star::table::CellRangeAddress> ranges(1);
        ranges.getArray()[0] = {static_cast<sal_Int16>(data.Sheet() - 1), data.Column() - 1, data.Row() - 1,
                                data.LastColumn() - 1, data.LastRow() - 1};
        charts->addNewByName(ToUno(QStringLiteral("Chart %1 %2").arg(sheet).arg(number)),
                             RectangleOn(model, sheet, place), ranges, columnHeaders, rowHeaders);
        SetDiagram(ChartOf(model, sheet, number), kind);
    });
    return {document, sheet, number};
}

int Chart::CountOn(const std::shared_ptr<Document>& document, int sheet) {
    int count = 0;
    document->Run([&](const Model& model) { count = static_cast<int>(ChartShapes(model, sheet).size()); });
    return count;
}

Chart Chart::At(const std::shared_ptr<Document>& document, int sheet, int number) {
    document->Run([&](const Model& model) { static_cast<void>(ShapeOf(model, sheet, number)); });
    return {document, sheet, number};
}

Chart::Chart(std::shared_ptr<Document> document, int sheet, int number)
    : document_(std::move(document)), sheet_(sheet), number_(number) {}

void Chart::SetKind(ChartKind kind) {
    document_->Run([&](const Model& model) { SetDiagram(ChartOf(model, sheet_, number_), kind); });
}

ChartKind Chart::Kind() const {
    ChartKind kind = ChartKind::Column;
    document_->Run([&](const Model& model) {
        const auto diagram = ChartOf(model, sheet_, number_)->getDiagram();
        const QString type = FromUno(diagram->getDiagramType());
        for (const ChartKind other : {ChartKind::Line, ChartKind::Pie, ChartKind::Area, ChartKind::Scatter})
            if (type == QLatin1String(DiagramOf(other))) kind = other;
        bool lying = false;
        if (type == QLatin1String(DiagramOf(ChartKind::Bar)))
            Need<XPropertySet>(diagram)->getPropertyValue("Vertical") >>= lying;
        if (lying) kind = ChartKind::Bar;
    });
    return kind;
}

void Chart::SetSeriesInRows(bool inRows) {
    document_->Run([&](const Model& model) {
        using com::sun::star::chart::ChartDataRowSource;
        Need<XPropertySet>(ChartOf(model, sheet_, number_)->getDiagram())
            ->setPropertyValue("DataRowSource", Any(inRows ? ChartDataRowSource::ChartDataRowSource_ROWS
                                                           : ChartDataRowSource::ChartDataRowSource_COLUMNS));
    });
}

bool Chart::SeriesInRows() const {
    auto source = com::sun::star::chart::ChartDataRowSource::ChartDataRowSource_COLUMNS;
    document_->Run([&](const Model& model) {
        Need<XPropertySet>(ChartOf(model, sheet_, number_)->getDiagram())->getPropertyValue("DataRowSource") >>= source;
    });
    return source == com::sun::star::chart::ChartDataRowSource::ChartDataRowSource_ROWS;
}

void Chart::SetTitle(const QString& title) {
    document_->Run([&](const Model& model) {
        const auto chart = ChartOf(model, sheet_, number_);
        Need<XPropertySet>(chart)->setPropertyValue("HasMainTitle", Any(!title.isEmpty()));
        if (!title.isEmpty()) Need<XPropertySet>(chart->getTitle())->setPropertyValue("String", Any(ToUno(title)));
    });
}

QString Chart::Title() const {
    rtl::OUString title;
    document_->Run([&](const Model& model) {
        const auto chart = ChartOf(model, sheet_, number_);
        bool has = false;
        Need<XPropertySet>(chart)->getPropertyValue("HasMainTitle") >>= has;
        if (has) Need<XPropertySet>(chart->getTitle())->getPropertyValue("String") >>= title;
    });
    return FromUno(title);
}

void Chart::SetAxisTitles(const QString& xAxis, const QString& yAxis) {
    document_->Run([&](const Model& model) {
        const auto diagram = ChartOf(model, sheet_, number_)->getDiagram();
        const auto properties = Need<XPropertySet>(diagram);
        const Reference<com::sun::star::chart::XAxisXSupplier> x(diagram, UNO_QUERY);
        const Reference<com::sun::star::chart::XAxisYSupplier> y(diagram, UNO_QUERY);
        if (x.is()) SetAxisTitle(properties, "HasXAxisTitle", x->getXAxisTitle(), xAxis);
        if (y.is()) SetAxisTitle(properties, "HasYAxisTitle", y->getYAxisTitle(), yAxis);
    });
}

QStringList Chart::AxisTitles() const {
    QStringList texts;
    document_->Run([&](const Model& model) {
        texts.clear();
        for (const auto& title : AxisTitlesOf(ChartOf(model, sheet_, number_))) {
            rtl::OUString text;
            if (title.is()) title->getPropertyValue("String") >>= text;
            texts << FromUno(text);
        }
    });
    return texts;
}

void Chart::SetLegend(bool shown, bool below) {
    document_->Run([&](const Model& model) {
        using com::sun::star::chart::ChartLegendPosition;
        const auto chart = ChartOf(model, sheet_, number_);
        Need<XPropertySet>(chart)->setPropertyValue("HasLegend", Any(shown));
        if (!shown) return;
        const auto place =
            below ? ChartLegendPosition::ChartLegendPosition_BOTTOM : ChartLegendPosition::ChartLegendPosition_RIGHT;
        Need<XPropertySet>(chart->getLegend())->setPropertyValue("Alignment", Any(place));
    });
}

void Chart::SetPlain() {
    document_->Run([&](const Model& model) {
        const auto chart = ChartOf(model, sheet_, number_);
        const Any noFill(com::sun::star::drawing::FillStyle_NONE);
        const Reference<com::sun::star::chart::X3DDisplay> display(chart->getDiagram(), UNO_QUERY);
        if (display.is() && display->getWall().is()) display->getWall()->setPropertyValue("FillStyle", noFill);
        for (const auto& axis : AxesOf(chart)) {
            axis->setPropertyValue("LinkNumberFormatToSource", Any(false));
            axis->setPropertyValue("NumberFormat", Any(sal_Int32(0)));
        }
        bool hasLegend = false;
        Need<XPropertySet>(chart)->getPropertyValue("HasLegend") >>= hasLegend;
        if (!hasLegend) return;
        const auto legend = Need<XPropertySet>(chart->getLegend());
        legend->setPropertyValue("FillStyle", noFill);
        legend->setPropertyValue("LineStyle", Any(com::sun::star::drawing::LineStyle_NONE));
    });
}

void Chart::SetValueFormat(const QString& code, bool alsoAlong) {
    document_->Run([&](const Model& model) {
        const auto chart = ChartOf(model, sheet_, number_);
        for (const auto& axis : AxesOf(chart))
            if (alsoAlong || axis != AlongAxis(chart)) SetNumberFormat(chart, axis, code);
    });
}

void Chart::SetAlongFormat(const QString& code) {
    document_->Run([&](const Model& model) {
        const auto chart = ChartOf(model, sheet_, number_);
        SetNumberFormat(chart, AlongAxis(chart), code);
    });
}

void Chart::SetStacked(bool stacked) {
    document_->Run([&](const Model& model) {
        Need<XPropertySet>(ChartOf(model, sheet_, number_)->getDiagram())->setPropertyValue("Stacked", Any(stacked));
    });
}

void Chart::SetLines(bool shown) {
    document_->Run([&](const Model& model) {
        Need<XPropertySet>(ChartOf(model, sheet_, number_)->getDiagram())->setPropertyValue("Lines", Any(shown));
    });
}

void Chart::SetFont(const QString& name, double points) {
    document_->Run([&](const Model& model) {
        const auto chart = ChartOf(model, sheet_, number_);
        const auto properties = Need<XPropertySet>(chart);
        bool hasTitle = false;
        bool hasLegend = false;
        properties->getPropertyValue("HasMainTitle") >>= hasTitle;
        properties->getPropertyValue("HasLegend") >>= hasLegend;
        if (hasTitle) SetFontOf(Need<XPropertySet>(chart->getTitle()), name, points * 1.3);
        if (hasLegend) SetFontOf(Need<XPropertySet>(chart->getLegend()), name, points);
        for (const auto& axis : AxesOf(chart))
            SetFontOf(axis, name, points);
        for (const auto& title : AxisTitlesOf(chart))
            SetFontOf(title, name, points * 0.9);
    });
}

void Chart::SetAxisFont(const QString& name, double points) {
    document_->Run([&](const Model& model) {
        for (const auto& axis : AxesOf(ChartOf(model, sheet_, number_)))
            SetFontOf(axis, name, points);
    });
}

void Chart::SetLegendFont(const QString& name, double points) {
    document_->Run([&](const Model& model) {
        const auto chart = ChartOf(model, sheet_, number_);
        bool shown = false;
        Need<XPropertySet>(chart)->getPropertyValue("HasLegend") >>= shown;
        if (shown) SetFontOf(Need<XPropertySet>(chart->getLegend()), name, points);
    });
}

namespace {

/// Calls with each series' properties until there is no further one; the number of series.
int ForEachSeries(const Reference<XChartDocument>& chart,
                  const std::function<void(int, const Reference<XPropertySet>&)>& visit) {
    const auto diagram = chart->getDiagram();
    for (int series = 0; series < kMaxColumns; ++series) {
        Reference<XPropertySet> properties;
        try {
            properties = diagram->getDataRowProperties(series);
        } catch (const com::sun::star::uno::Exception&) {
            return series; // past the last one
        }
        if (!properties.is()) return series;
        visit(series + 1, properties);
    }
    return kMaxColumns;
}

} // namespace

void Chart::SetSeriesColor(int series, int colorIndex) {
    document_->Run([&](const Model& model) {
        const Any colour(static_cast<sal_Int32>(document_->ColorNumber(colorIndex)));
        ForEachSeries(ChartOf(model, sheet_, number_), [&](int number, const Reference<XPropertySet>& properties) {
            if (number == series) properties->setPropertyValue("Color", colour);
        });
    });
}

void Chart::SetSecondAxis(const std::vector<int>& series, const QString& title) {
    document_->Run([&](const Model& model) {
        namespace ChartAxisAssign = com::sun::star::chart::ChartAxisAssign;
        const auto chart = ChartOf(model, sheet_, number_);
        ForEachSeries(chart, [&](int number, const Reference<XPropertySet>& properties) {
            if (std::find(series.begin(), series.end(), number) != series.end())
                properties->setPropertyValue("Axis", Any(sal_Int32(ChartAxisAssign::SECONDARY_Y)));
        });
        const auto diagram = Need<XPropertySet>(chart->getDiagram());
        diagram->setPropertyValue("HasSecondaryYAxis", Any(true));
        const Reference<com::sun::star::chart::XSecondAxisTitleSupplier> other(chart->getDiagram(), UNO_QUERY);
        if (other.is()) SetAxisTitle(diagram, "HasSecondaryYAxisTitle", other->getSecondYAxisTitle(), title);
    });
}

bool Chart::HasSecondAxis() const {
    bool has = false;
    document_->Run([&](const Model& model) { has = Shows(ChartOf(model, sheet_, number_), "HasSecondaryYAxis"); });
    return has;
}

void Chart::SetSymbols(const std::vector<int>& series) {
    document_->Run([&](const Model& model) {
        const auto chart = ChartOf(model, sheet_, number_);
        ForEachSeries(chart, [&](int number, const Reference<XPropertySet>& properties) {
            if (std::find(series.begin(), series.end(), number) != series.end())
                properties->setPropertyValue("SymbolType",
                                             Any(sal_Int32(com::sun::star::chart::ChartSymbolType::AUTO)));
        });
        Need<XPropertySet>(chart->getDiagram())
            ->setPropertyValue("MissingValueTreatment",
                               Any(sal_Int32(com::sun::star::chart::MissingValueTreatment::CONTINUE)));
    });
}

void Chart::SetShares() {
    document_->Run([&](const Model& model) {
        const auto chart = ChartOf(model, sheet_, number_);
        Need<XPropertySet>(chart->getDiagram())
            ->setPropertyValue("DataCaption", Any(sal_Int32(com::sun::star::chart::ChartDataCaption::PERCENT)));
        ForEachSeries(chart, [](int, const Reference<XPropertySet>& properties) {
            properties->setPropertyValue("LabelPlacement",
                                         Any(sal_Int32(com::sun::star::chart::DataLabelPlacement::OUTSIDE)));
        });
    });
}

int Chart::SeriesCount() const {
    int count = 0;
    document_->Run([&](const Model& model) {
        const auto chart = ChartOf(model, sheet_, number_);
        count = ForEachSeries(chart, [](int, const Reference<XPropertySet>&) {});
        // The values along the axis of a scatter chart are listed as well, but are no series.
        if (count > 0 && FromUno(chart->getDiagram()->getDiagramType()) == QLatin1String(DiagramOf(ChartKind::Scatter)))
            --count;
    });
    return count;
}

void Chart::SetPlace(const QRectF& points) {
    document_->Run([&](const Model& model) { Put(model, sheet_, ShapeOf(model, sheet_, number_), points); });
}

QRectF Chart::Place() const {
    QRectF place;
    document_->Run([&](const Model& model) { place = PlaceOn(model, sheet_, ShapeOf(model, sheet_, number_)); });
    return place;
}

QByteArray Chart::AsPicture(const QString& mimeType, int pixelWidth) const {
    QByteArray picture;
    document_->Run([&](const Model& model) {
        picture = ShapeAs(
            document_->connection(), [&] { return ShapeOf(model, sheet_, number_); }, mimeType, pixelWidth);
    });
    return picture;
}

} // namespace tessaro::office
