#pragma once

#include "shell/SoundLoop.h"

#include <QColor>
#include <QDialog>
#include <QTimer>

#include <array>
#include <functional>
#include <memory>

namespace Ui {
class frmProperties;
}

namespace tessaro {

/// The preferences that the properties dialog edits.
struct PropertyValues {
    QString language;
    QString font;
    int fontSize = 0;
    int fontStyle = 0;
    bool collapse = false, autoSelect = false, gridLines = false, numFormat = false, footnotes = false;
    bool showGlobalColor = false;
    long globalColor = 0;
    long dataExists = 0;
    QString sound;
    bool mute = false;
    std::array<bool, 7> views{};
    QString openWith;
    long selectBy = 0;
    bool operator==(const PropertyValues&) const = default;

    /// What the session has now, and the way back.
    [[nodiscard]] static PropertyValues OfSession();
    /// Writes all into the session except language and font, which the frame changes.
    void PutIntoSession() const;
};

/// Edits the preferences; OK and Apply hand them to whoever brings the session into line.
class frmProperties final : public QDialog {
    Q_OBJECT

  public:
    /// Before and after, when something is applied.
    using Apply = std::function<void(const PropertyValues&, const PropertyValues&)>;
    frmProperties(Apply apply, QWidget* parent = nullptr);
    ~frmProperties() override;

    void cmdImport_Click();

  private:
    void SetFormCaptions();
    void LoadControls();
    [[nodiscard]] PropertyValues ReadControls() const;
    void FillLanguages();
    void FillSounds();
    void ConnectControls();
    void cmbLanguages_Click();
    void ShowPreview();
    void ShowColor();
    void cmdApply_Click();
    void EnableViews();

    std::unique_ptr<Ui::frmProperties> ui_;
    Apply apply_;
    PropertyValues before_;
    QColor color_;
    SoundLoop preview_;
    QTimer tmrPreview_;
};

} // namespace tessaro
