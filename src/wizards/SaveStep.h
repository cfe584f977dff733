#pragma once

#include <QChar>
#include <QString>

#include <functional>

class QWidget;

/// The step in which a wizard saves its workbook to the gallery.
namespace tessaro {

/// What a wizard hands to its last step: a finished workbook.
struct FinishedPresentation {
    QChar PresentationType; ///< 'T', 'G' or 'M'
    QString SourceFile;     ///< its path
    QString FileTitle;      ///< suggested name
    QString FormCaption;
};

/// Lets the user save it. True when the wizard is over (saved, or given up), False to go back to the preview.
using SavePresentation = std::function<bool(const FinishedPresentation&, QWidget* parent)>;
/// Into the gallery, with frmSaveGalleryAdvance; the status bar tells the name for a while.
bool SaveToGallery(const FinishedPresentation& finished, QWidget* parent);

} // namespace tessaro
