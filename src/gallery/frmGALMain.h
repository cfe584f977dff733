#pragma once

#include "controls/StageScreen.h"
#include "gallery/GalleryFolder.h"

#include <memory>
#include <vector>

class QModelIndex;
class QSortFilterProxyModel;

namespace Ui {
class frmGALMain;
}

namespace tessaro {

class GalleryModel;
class Thumbnails;

/// The gallery: the subfolders and workbooks of one folder, the chosen workbook in its own program beside them, and the
/// slides that presentations are copied to. What has been changed in a shown workbook is asked about before it is left.
class frmGALMain final : public StageScreen {
    Q_OBJECT

  public:
    explicit frmGALMain(QWidget* parent = nullptr);
    ~frmGALMain() override;

    [[nodiscard]] QString FormName() const override { return QStringLiteral("GALL"); }
    void Enter() override;
    void Leave() override;
    void SelectAll() override;
    void Find() override;
    void Refresh() override;
    void SetFormCaptions() override;

    /// Fills the list from GalleryFolder and opens its first workbook, once the screen is seen.
    void GetPresentationsFromGallery();
    /// Opens a workbook of the folder by its file name; the one on show is opened anew only with `asNew`. A file that
    /// has gone, or is no file any more, leaves the list.
    void ShowCurrentPresentation(const QString& name, bool asNew);
    /// The file on show; empty when there is none.
    [[nodiscard]] const QString& CurrentPresentation() const { return currentPresentation_; }

    void cmdBrowse_Click();
    void cmdBrowseUp_Click();
    void cmdDelete_Click();

    // Slides (frmGALMainSlides.cpp).
    /// Copies what is shown to a new slide; right after a copy, closes the slides.
    void cmdCopyToPPT_Click();
    /// Saves the slides, asking for a name where they have none. False when they are not saved.
    bool SavePPT();
    /// Saves the slides under another name, which they keep. False when they are not saved.
    bool SavePPTAs();
    /// Closes the slides; those that aren't saved are asked about. False when the user stays with them, which
    /// `mayStay` offers.
    bool QuitPPT(bool mayStay = true);
    /// True when the screen may be left: changes of the shown workbook and slides that aren't saved are asked about.
    [[nodiscard]] bool MayLeave(bool mayStay) { return MayCloseShown(mayStay) && QuitPPT(mayStay); }

  private:
    void ConnectControls();
    void ConnectList();
    void ConnectSlides();
    void ShowFolder(const QString& folder);
    void OpenFolderOf(const GalleryEntry& entry);
    void OpenCurrent();
    void lstPresentations_Click(const QModelIndex& index);
    void ShowFirst();
    void ShowNext(int row);
    void ReadFolder();
    void HighlightFile(const QString& file);
    void CloseShown();
    bool MayCloseShown(bool mayStay);
    bool SaveShown();
    bool DeletePresentation(const GalleryEntry& entry);
    void OfferCommands();
    void ShowCounts();
    void ShowCaption();
    [[nodiscard]] const GalleryEntry* Entry(const QModelIndex& index) const;
    [[nodiscard]] std::vector<GalleryEntry> HighlightedPresentations() const;

    [[nodiscard]] bool AskForSlides(QString& file);
    [[nodiscard]] QList<QByteArray> CopyPresentation();
    [[nodiscard]] int AskForParts(int needed);
    bool ShowPPT(bool newPresentation, const QString& file);
    void CreateNewPresentation();
    void InsertSlide_PasteClipboard(const QByteArray& picture);
    [[nodiscard]] bool HasUnsavedSlides();
    [[nodiscard]] QString AskForPPTFile();
    bool StorePPT(const QString& file);
    void ClosePPT();
    void ShowPPTState();

    std::unique_ptr<Ui::frmGALMain> ui_;
    GalleryModel* model_;
    QSortFilterProxyModel* shownRows_;
    Thumbnails* thumbnails_;
    QString folder_; ///< that the list shows
    QString currentPresentation_;
    QString currentFolder_;   ///< of the file on show
    QString pptFile_;         ///< name of the slides; empty while they have none
    bool emptyFirst_ = false; ///< the new slides still have the empty slide that they came with
    bool copied_ = false;     ///< what is shown has just been copied: cmdCopyToPPT closes the slides
    bool opening_ = false;
    bool firstWaits_ = false;
};

} // namespace tessaro
