#include "map/classes/ClassDialogs.h"

#include "controls/Captions.h"
#include "controls/EmptyHint.h"
#include "controls/FileDialogs.h"
#include "controls/FontDialogs.h"
#include "controls/Theme.h"
#include "platform/Paths.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace tessaro {

namespace {

constexpr const char* kFills[] = {"Solid fill",    "Transparent fill",     "Horizontal fill",
                                  "Vertical fill", "Upward diagonal fill", "Downward diagonal fill",
                                  "Cross fill",    "Diagonal cross fill",  "Light gray fill",
                                  "Gray fill",     "Dark gray fill"};
constexpr const char* kMarkers[] = {"Circle Marker", "Square Marker", "Triangle Marker", "Cross Marker"};
constexpr QSize kMenuPicture(32, 20);
constexpr int kMostSize = 250;

/// A window with fields one below the other and the buttons OK and Cancel.
class CellDialog final : public QDialog {
  public:
    CellDialog(QWidget* parent, const char* name, const QString& title) : QDialog(parent) {
        setObjectName(QLatin1String(name));
        setWindowTitle(title);
        auto* outer = new QVBoxLayout(this);
        outer->setSpacing(theme::kGrid);
        outer->addLayout(fields_ = new QVBoxLayout);
        buttons_ = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
        outer->addWidget(buttons_);
        Ok()->setObjectName(QStringLiteral("cmdOK"));
        SetCaption(Ok(), QStringLiteral("OK BUTTON"));
        SetCaption(buttons_->button(QDialogButtonBox::Cancel), QStringLiteral("CANCEL BUTTON"));
        connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    }
    [[nodiscard]] QPushButton* Ok() const { return buttons_->button(QDialogButtonBox::Ok); }
    template <class Widget> Widget* Add(Widget* widget, const char* name, const QString& accessibleName) {
        widget->setObjectName(QLatin1String(name));
        widget->setAccessibleName(accessibleName);
        fields_->addWidget(widget);
        return widget;
    }
    [[nodiscard]] bool Accepted() {
        SetFormFonts(this);
        return exec() == QDialog::Accepted;
    }

  private:
    QVBoxLayout* fields_;
    QDialogButtonBox* buttons_;
};

template <std::size_t count>
std::optional<int> AskForStyle(QWidget* parent, QPoint place, const char* name, const char* const (&keys)[count],
                               QPixmap (*picture)(int, const QColor&, QSize)) {
    QMenu menu(parent);
    menu.setObjectName(QLatin1String(name));
    for (std::size_t i = 0; i < count; ++i)
        menu.addAction(picture(static_cast<int>(i), parent->palette().text().color(), kMenuPicture),
                       PlainText(QLatin1String(keys[i])));
    const auto chosen = menu.actions().indexOf(menu.exec(place));
    if (chosen < 0) return std::nullopt;
    return static_cast<int>(chosen);
}

void FillPalettes(QListWidget* list, const QString& folder) {
    for (const QString& file : FilesOf(folder))
        if (file.endsWith(QLatin1String(".plf"), Qt::CaseInsensitive)) {
            auto* item = new QListWidgetItem(file, list);
            item->setData(Qt::UserRole, JoinPath({folder, file}));
        }
}

/// Adds a file from elsewhere to the list and chooses it.
void Browse(QListWidget* list, const QString& folder) {
    const QString filter = GetText(QStringLiteral("TS_FilterPalette")) + QStringLiteral(" (*.plf)");
    const QString file = AskForFile(list, {PlainText(QStringLiteral("TS_LoadPalette")), folder, filter});
    if (file.isEmpty()) return;
    auto* item = new QListWidgetItem(FileNameOf(file), list);
    item->setData(Qt::UserRole, file);
    list->setCurrentItem(item);
}

} // namespace

QPixmap EmptyPicture(QSize size) {
    const double ratio = qApp->devicePixelRatio();
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    return picture;
}

std::optional<QString> AskForBreak(QWidget* parent, const QString& heading, const QString& text) {
    CellDialog frmMAPFrom_To(parent, "frmMAPFrom_To", heading);
    auto* txtBreak = frmMAPFrom_To.Add(new QLineEdit(text), "txtBreak", heading);
    txtBreak->setLayoutDirection(Qt::LeftToRight);
    txtBreak->setAlignment(ReadingSide());
    txtBreak->selectAll();
    if (!frmMAPFrom_To.Accepted()) return std::nullopt;
    return txtBreak->text();
}

std::optional<ClassLook> AskForLegend(QWidget* parent, ClassLook look) {
    const QString heading = PlainText(QStringLiteral("Legend"));
    CellDialog dialog(parent, "frmMAPLabelCustomize", heading);
    auto* txtLabelModify = dialog.Add(new QLineEdit(look.legend), "txtLabelModify", heading);
    txtLabelModify->setMaxLength(255);
    auto* cmdLblFont = dialog.Add(new QPushButton, "cmdLblFont", {});
    SetCaption(cmdLblFont, QStringLiteral("COMM_Font"));
    cmdLblFont->setAutoDefault(false);
    QObject::connect(cmdLblFont, &QPushButton::clicked, &dialog, [&] {
        if (const auto font = AskForFont(&dialog, PlainText(QStringLiteral("COMM_Font")), look.font)) look.font = *font;
    });
    if (!dialog.Accepted()) return std::nullopt;
    look.legend = txtLabelModify->text();
    return look;
}

std::optional<int> AskForMarkerSize(QWidget* parent, int size) {
    const QString heading = PlainText(QStringLiteral("Size"));
    CellDialog dialog(parent, "frmMAPSizeCustomize", heading);
    auto* txtSizeModify = dialog.Add(new QSpinBox, "txtSizeModify", heading);
    txtSizeModify->setRange(1, kMostSize);
    txtSizeModify->setValue(size);
    if (!dialog.Accepted()) return std::nullopt;
    return txtSizeModify->value();
}

std::optional<int> AskForFill(QWidget* parent, QPoint place) {
    return AskForStyle(parent, place, "frmPStyle", kFills, &FillPicture);
}

std::optional<int> AskForMarker(QWidget* parent, QPoint place) {
    return AskForStyle(parent, place, "frmStyle", kMarkers, &MarkerPicture);
}

QString NameOfFill(int fill) {
    return PlainText(QLatin1String(kFills[static_cast<int>(PatternOfNumber(fill))]));
}

QString NameOfMarker(int marker) {
    return PlainText(QLatin1String(kMarkers[marker < 0 || marker >= int(std::size(kMarkers)) ? 0 : marker]));
}

QPixmap FillPicture(int fill, const QColor& color, QSize size) {
    QPixmap picture = EmptyPicture(size);
    QPainter painter(&picture);
    const QRect place(QPoint(), size);
    painter.fillRect(place, PatternBrush(PatternOfNumber(fill), color, 1));
    painter.setPen(theme::MutedText());
    painter.drawRect(place.adjusted(0, 0, -1, -1));
    return picture;
}

QPixmap MarkerPicture(int marker, const QColor& color, QSize size) {
    QPixmap picture = EmptyPicture(size);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    MapLayer layer;
    layer.kind = LayerKind::Point;
    layer.points = {{0, 0}};
    layer.partStarts = {0, 1};
    layer.features = {{0, 1, {0, 0, 0, 0}}};
    LayerSymbols symbols;
    symbols.symbols[0].color = color;
    symbols.symbols[0].marker = static_cast<Marker>(marker);
    symbols.symbols[0].markerSize = size.height() * 0.6;
    const double ratio = picture.devicePixelRatio();
    painter.scale(1 / ratio, 1 / ratio);
    PaintLayer(painter, layer, symbols, MapView({-1, -1, 1, 1}, picture.size(), 1), ratio);
    return picture;
}

std::optional<PaletteChoice> AskForPalette(QWidget* parent, const QString& folder) {
    CellDialog dialog(parent, "frmMAPPaletteCustomize", PlainText(QStringLiteral("TS_LoadPalette")));
    auto* files = dialog.Add(new QListWidget, "FileSourcePath", PlainText(QStringLiteral("TS_File")));
    FillPalettes(files, folder);
    ShowWhenEmpty(files, GetText(QStringLiteral("TS_NoPalettes")));
    auto* browse = dialog.Add(new QPushButton, "cmdBrowse", {});
    SetCaption(browse, QStringLiteral("TS_BrowsePalettes"));
    browse->setAutoDefault(false);
    const char* const captions[] = {"Labels", "Colors", "Range"};
    QCheckBox* boxes[3];
    for (int i = 0; i < 3; ++i) {
        boxes[i] = dialog.Add(new QCheckBox, "chkLabelColour", {});
        boxes[i]->setText(PlainText(QLatin1String(captions[i])));
        boxes[i]->setChecked(i == 1);
    }
    const auto enable = [&] { dialog.Ok()->setEnabled(files->currentItem() != nullptr); };
    QObject::connect(files, &QListWidget::currentItemChanged, &dialog, enable);
    QObject::connect(files, &QListWidget::itemActivated, &dialog, &QDialog::accept);
    QObject::connect(browse, &QPushButton::clicked, &dialog, [&] { Browse(files, folder); });
    enable();
    if (!dialog.Accepted() || !files->currentItem()) return std::nullopt;
    return PaletteChoice{files->currentItem()->data(Qt::UserRole).toString(), boxes[0]->isChecked(),
                         boxes[1]->isChecked(), boxes[2]->isChecked()};
}

} // namespace tessaro
