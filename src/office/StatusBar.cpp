#include "office/StatusBar.h"

#include "office/Convert.h"
#include "office/ProcessLink.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/LayoutManagerEvents.hpp>
#include <com/sun/star/frame/XFrameActionListener.hpp>
#include <com/sun/star/frame/XLayoutManagerEventBroadcaster.hpp>
#include <com/sun/star/frame/XLayoutManagerListener.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <cppuhelper/implbase2.hxx>
#include <rtl/ref.hxx>

namespace tessaro::office {

using namespace com::sun::star::frame;
using com::sun::star::uno::Reference;

namespace {

constexpr char kStatusBar[] = "private:resource/statusbar/statusbar";
constexpr char kProgressBar[] = "private:resource/progressbar/progressbar";

void FitStatusBar(const Reference<XFrame>& frame) {
    const auto layout = LayoutOf(frame);
    if (!layout.is()) return;
    if (ShowsSheets(frame)) {
        layout->hideElement(Ascii(kStatusBar));
    } else {
        layout->createElement(Ascii(kStatusBar)); // it isn't there where it was hidden from the start
        layout->showElement(Ascii(kStatusBar));
    }
}

/// Hears of each new view of a frame, and of bars that come. What is to be done is done later, since the program waits
/// for the listener.
class BarListener final : public cppu::WeakImplHelper2<XFrameActionListener, XLayoutManagerListener> {
  public:
    BarListener(const std::shared_ptr<ProcessLink>& connection, bool slides)
        : connection_(connection), slides_(slides) {}

    void SAL_CALL frameAction(const FrameActionEvent& event) override {
        const bool newView =
            event.Action == FrameAction_COMPONENT_ATTACHED || event.Action == FrameAction_COMPONENT_REATTACHED;
        if (newView && !slides_) Later([frame = event.Frame] { FitStatusBar(frame); });
    }
    // The program shows this bar at the start of a long work, and leaves it there, empty, at the end.
    void SAL_CALL layoutEvent(const com::sun::star::lang::EventObject& source, sal_Int16 event,
                              const com::sun::star::uno::Any& info) override {
        rtl::OUString bar;
        if (event != LayoutManagerEvents::UIELEMENT_VISIBLE || !(info >>= bar) || bar != kProgressBar) return;
        Later([layout = Reference<XLayoutManager>(source.Source, com::sun::star::uno::UNO_QUERY)] {
            if (layout.is()) layout->hideElement(Ascii(kProgressBar));
        });
    }
    void SAL_CALL disposing(const com::sun::star::lang::EventObject& /*source*/) override {}

  private:
    void Later(std::function<void()> work) const {
        if (const auto connection = connection_.lock()) connection->Post(std::move(work));
    }

    std::weak_ptr<ProcessLink> connection_;
    bool slides_;
};

} // namespace

Reference<XLayoutManager> LayoutOf(const Reference<XFrame>& frame) {
    Reference<XLayoutManager> layout;
    Need<com::sun::star::beans::XPropertySet>(frame)->getPropertyValue("LayoutManager") >>= layout;
    return layout;
}

bool ShowsSheets(const Reference<XFrame>& frame) {
    return Reference<com::sun::star::sheet::XSpreadsheetView>(frame->getController(), com::sun::star::uno::UNO_QUERY)
        .is();
}

void KeepStatusBarToPreview(const std::shared_ptr<ProcessLink>& connection, const Reference<XFrame>& frame,
                            bool slides) {
    const rtl::Reference<BarListener> listener(new BarListener(connection, slides));
    frame->addFrameActionListener(listener.get());
    Need<XLayoutManagerEventBroadcaster>(LayoutOf(frame))->addLayoutManagerEventListener(listener.get());
}

} // namespace tessaro::office
