#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XLayoutManager.hpp>
#include <memory>

namespace tessaro::office {

class ProcessLink;

// On the worker thread.

/// What places the bars of a frame; none where the frame shows nothing.
[[nodiscard]] com::sun::star::uno::Reference<com::sun::star::frame::XLayoutManager>
LayoutOf(const com::sun::star::uno::Reference<com::sun::star::frame::XFrame>& frame);

/// False for a print preview, whose controller is none of sheets.
[[nodiscard]] bool ShowsSheets(const com::sun::star::uno::Reference<com::sun::star::frame::XFrame>& frame);

/// From now on the frame has no status bar at its foot but with the print preview of a workbook, whose page it tells;
/// whoever has changed the view. The bar that shows the progress of a saving goes again.
void KeepStatusBarToPreview(const std::shared_ptr<ProcessLink>& connection,
                            const com::sun::star::uno::Reference<com::sun::star::frame::XFrame>& frame, bool slides);

} // namespace tessaro::office
