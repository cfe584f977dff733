#pragma once

#include "map/MapDraft.h"

#include <QWidget>

#include <memory>

class QLineEdit;
class QToolButton;

namespace Ui {
class MapCustomizePage;
}

namespace tessaro {

/// The page of a map's texts, their fonts, the labels of its areas, and the form of the page it is printed on. It edits
/// a draft that outlives it.
class MapCustomizePage final : public QWidget {
    Q_OBJECT

  public:
    explicit MapCustomizePage(MapDraft& draft, QWidget* parent = nullptr);
    ~MapCustomizePage() override;

    /// Shows what the draft holds.
    void ShowDraft();
    /// Small maps of several periods are only there when there are several.
    void OfferSmallMaps(bool offered);
    void SetFormCaptions();

  Q_SIGNALS:
    void LabelsChanged(); ///< field or font of the theme's labels in the draft's layers
    void CustomizeRequested();
    void CombinedLabelsRequested();

  private:
    void ConnectTexts();
    void ChooseFont(MapText& text, const QString& captionKey);
    void ChooseLabelFont();
    void LabelFieldChosen();
    void ShowLabelPreview();
    void FillLabelFields();
    void ChooseLayout(MapLayout layout);
    void ShowLayout();
    [[nodiscard]] LayerDraft* ThemeLayer() const;

    std::unique_ptr<Ui::MapCustomizePage> ui_;
    MapDraft& draft_;
};

/// A small picture of a page in a form: the map and where its legend stands.
[[nodiscard]] QPixmap LayoutPicture(MapLayout layout, const QPalette& colors, qreal ratio);

} // namespace tessaro
