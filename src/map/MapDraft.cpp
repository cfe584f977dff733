#include "map/MapDraft.h"

#include "wizards/DraftLines.h"

#include <QLocale>

#include <array>

namespace tessaro {

namespace {

const QChar kPart(QLatin1Char('|'));
constexpr int kMostDecimals = 15;
constexpr int kLargestMarker = 250;

/// The texts between the bars of a line, one after the other; `good` as long as all could be read.
class Parts final {
  public:
    explicit Parts(const QString& line) : parts_(line.split(kPart)) {}

    [[nodiscard]] QString Text() { return FromPlainLineText(Next()); }
    [[nodiscard]] double Number() {
        bool read = false;
        const double number = Next().toDouble(&read);
        good_ = good_ && read;
        return number;
    }
    [[nodiscard]] int Whole(int least, int most) {
        bool read = false;
        const int number = Next().toInt(&read);
        good_ = good_ && read && number >= least && number <= most;
        return good_ ? number : least;
    }
    [[nodiscard]] bool Flag() { return Whole(0, 1) == 1; }
    [[nodiscard]] QColor Color() {
        const QColor color(Next());
        good_ = good_ && color.isValid();
        return color;
    }
    [[nodiscard]] QFont Font() {
        const QString text = Text();
        QFont font;
        good_ = good_ && (text.isEmpty() || font.fromString(text));
        return font;
    }
    /// True when all parts were read and none is left.
    [[nodiscard]] bool Good() const { return good_ && at_ == parts_.size(); }

  private:
    QString Next() {
        good_ = good_ && at_ < parts_.size();
        return parts_.value(at_++);
    }

    QStringList parts_;
    qsizetype at_ = 0;
    bool good_ = true;
};

QString Shortest(double number) {
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

/// Empty for the program's own font. A font must have a family to be read again.
QString FontName(QFont font) {
    if (font.family().isEmpty()) font.setFamily(QFont().family());
    return font == QFont() ? QString() : PlainLineText(font.toString());
}

QString Flag(bool value) {
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

QString ClassLine(const ClassBreak& each) {
    return QStringList{Shortest(each.from), Shortest(each.to), Shortest(each.lower), Shortest(each.upper),
                       QString::number(each.count)}
        .join(kPart);
}

std::optional<ClassBreak> ClassFrom(const QString& line) {
    Parts parts(line);
    const double from = parts.Number();
    const double to = parts.Number();
    const double lower = parts.Number();
    const double upper = parts.Number();
    const ClassBreak read{from, to, lower, upper, parts.Whole(0, INT_MAX)};
    return parts.Good() ? std::optional(read) : std::nullopt;
}

QString LookLine(const ClassLook& look) {
    return QStringList{PlainLineText(look.legend), FontName(look.font),          look.color.name(),
                       QString::number(look.fill), QString::number(look.marker), QString::number(look.size)}
        .join(kPart);
}

std::optional<ClassLook> LookFrom(const QString& line) {
    Parts parts(line);
    ClassLook look;
    look.legend = parts.Text();
    look.font = parts.Font();
    look.color = parts.Color();
    look.fill = parts.Whole(0, static_cast<int>(FillPattern::DarkGray));
    look.marker = parts.Whole(0, static_cast<int>(Marker::Cross));
    look.size = parts.Whole(1, kLargestMarker);
    return parts.Good() ? std::optional(look) : std::nullopt;
}

QString LayerLine(const LayerDraft& layer) {
    const LayerSymbol& symbol = layer.symbol;
    return QStringList{PlainLineText(layer.file.name),
                       PlainLineText(layer.file.folder),
                       Flag(layer.ofTheme),
                       Flag(layer.visible),
                       symbol.color.name(),
                       QString::number(static_cast<int>(symbol.pattern)),
                       symbol.outline.name(),
                       Shortest(symbol.outlineWidth),
                       QString::number(static_cast<int>(symbol.lineStyle)),
                       Shortest(symbol.lineWidth),
                       QString::number(static_cast<int>(symbol.marker)),
                       Shortest(symbol.markerSize),
                       Flag(layer.labelOn),
                       PlainLineText(layer.labelField),
                       FontName(layer.labelFont),
                       layer.labelColor.name(),
                       Flag(layer.labelHalo),
                       Flag(layer.labelsOverlap)}
        .join(kPart);
}

LayerSymbol SymbolFrom(Parts& parts) {
    LayerSymbol symbol;
    symbol.color = parts.Color();
    symbol.pattern = PatternOfNumber(parts.Whole(0, static_cast<int>(FillPattern::DarkGray)));
    symbol.outline = parts.Color();
    symbol.outlineWidth = parts.Number();
    symbol.lineStyle = static_cast<Qt::PenStyle>(parts.Whole(Qt::NoPen, Qt::DashDotDotLine));
    symbol.lineWidth = parts.Number();
    symbol.marker = static_cast<Marker>(parts.Whole(0, static_cast<int>(Marker::Cross)));
    symbol.markerSize = parts.Number();
    return symbol;
}

std::optional<LayerDraft> LayerFrom(const QString& line) {
    Parts parts(line);
    LayerDraft layer;
    layer.file.name = parts.Text();
    layer.file.folder = parts.Text();
    layer.ofTheme = parts.Flag();
    layer.visible = parts.Flag();
    layer.symbol = SymbolFrom(parts);
    layer.labelOn = parts.Flag();
    layer.labelField = parts.Text();
    layer.labelFont = parts.Font();
    layer.labelColor = parts.Color();
    layer.labelHalo = parts.Flag();
    layer.labelsOverlap = parts.Flag();
    return parts.Good() ? std::optional(layer) : std::nullopt;
}

/// The value of an enum by the names of its values.
template <class Value> DraftLine EnumLine(const char* name, std::vector<const char*> names, Value& value) {
    return ChoiceLine(
        name, std::move(names), [&value] { return static_cast<int>(value); },
        [&value](int choice) { value = static_cast<Value>(choice); });
}

DraftLine MissingLine(const char* name, ClassLook& look) {
    return OneLine(
        name, [&look] { return LookLine(look); },
        [&look](const QString& line) {
            const auto read = LookFrom(line);
            if (read) look = *read;
            return read.has_value();
        });
}

DraftLine BoxLine(const char* name, MapBox& box) {
    return OneLine(
        name,
        [&box] {
            return QStringList{Shortest(box.left), Shortest(box.bottom), Shortest(box.right), Shortest(box.top)}.join(
                kPart);
        },
        [&box](const QString& line) {
            Parts parts(line);
            std::array<double, 4> sides{};
            for (double& side : sides)
                side = parts.Number();
            box = {sides[0], sides[1], sides[2], sides[3]};
            return parts.Good();
        });
}

DraftLines LinesOf(MapDraft& draft) {
    ClassTable& table = draft.classes;
    return {
        TextLine("indicator", draft.theme.indicator),
        TextLine("subgroup", draft.theme.subpop),
        TextLine("unit", draft.theme.unit),
        FlagLine("advanced", draft.advanced),
        TextLine("period", draft.period),
        FlagLine("same classes", draft.sameClasses),
        EnumLine("method",
                 {"count", "size", "continuous", "discontinuous", "natural", "deviation", "round", "geometric"},
                 draft.choice),
        EnumLine("kind", {"none", "polygons", "points", "both"}, table.kind),
        NumberLine("decimals", table.decimals, kMostDecimals),
        ListLine("class", table.classes, &ClassLine, &ClassFrom),
        ListLine("look", table.looks, &LookLine, &LookFrom),
        MissingLine("missing", table.missing),
        TextLine("title", draft.title.text),
        FontLine("title font", draft.title.font),
        TextLine("subtitle", draft.subTitle.text),
        FontLine("subtitle font", draft.subTitle.font),
        TextLine("legend title", draft.legendTitle.text),
        FontLine("legend title font", draft.legendTitle.font),
        TextLine("disclaimer", draft.disclaimer.text),
        FontLine("disclaimer font", draft.disclaimer.font),
        FlagLine("titles typed", draft.titlesTyped),
        EnumLine("layout", {"square", "vertical", "horizontal"}, draft.layout),
        FlagLine("small maps", draft.smallMaps),
        TextLine("label formula", draft.labelFormula),
        ListLine("layer", draft.layers, &LayerLine, &LayerFrom),
        BoxLine("extent", draft.extent),
    };
}

} // namespace

QString DraftText(const MapDraft& draft) {
    MapDraft written = draft;
    return WrittenLines(LinesOf(written));
}

std::optional<MapDraft> ReadMapDraft(const QString& text) {
    MapDraft draft;
    const bool read =
        ReadDraftLines(text, LinesOf(draft)) && draft.classes.classes.size() == draft.classes.looks.size();
    return read ? std::optional(std::move(draft)) : std::nullopt;
}

} // namespace tessaro
