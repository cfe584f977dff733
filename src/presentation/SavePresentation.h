#pragma once

#include <QChar>
#include <QString>

#include <functional>

class QWidget;

namespace tessaro {

/// What the last step of a presentation wizard hands on: a finished workbook of TempFolder.
struct FinishedPresentation {
    QChar PresentationType; ///< 'T', 'G' or 'M'
    QString SourceFile;     ///< base name in TempFolder, without ".xls"
    QString FileTitle;      ///< suggested name
    QString FormCaption;
};

/// Lets the user save it. True when the wizard is over (saved, or given up), False to go back to the preview.
using SavePresentation = std::function<bool(const FinishedPresentation&, QWidget* parent)>;

} // namespace tessaro
