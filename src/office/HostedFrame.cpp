#include "office/HostedFrame.h"

#include "office/Convert.h"
#include "office/Document.h"
#include "office/SaveCommands.h"
#include "office/StatusBar.h"

#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/XDialog2.hpp>
#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XStyleSettingsSupplier.hpp>
#include <com/sun/star/awt/XSystemChildFactory.hpp>
#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameReplace.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XDispatchHelper.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XFrame2.hpp>
#include <com/sun/star/frame/XLayoutManager.hpp>
#include <com/sun/star/lang/SystemDependent.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/util/XChangesBatch.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <rtl/process.h>
#include <thread>

namespace tessaro::office {

using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using com::sun::star::uno::Sequence;

struct HostedFrame::State {
    std::shared_ptr<ProcessLink> connection;
    unsigned generation = 0;
    QPalette palette;
    Reference<com::sun::star::awt::XWindow> window;
    Reference<com::sun::star::frame::XFrame2> frame;
    bool slides = false;
    std::unique_ptr<SaveCommands> saveCommands;
};

namespace {

constexpr auto kNextLook = std::chrono::milliseconds(25);
constexpr int kViewLooks = 20; ///< for another view
constexpr int kEndTries = 40;  ///< for the last dialog to go
constexpr const char* kMenuBar = "private:resource/menubar/menubar";
constexpr const char* kBars[] = {"private:resource/toolbar/standardbar", "private:resource/toolbar/formatobjectbar"};

void Dispatch(const ProcessLink& connection, const Reference<com::sun::star::frame::XFrame2>& frame,
              const char* command) {
    Need<com::sun::star::frame::XDispatchHelper>(connection.Service("com.sun.star.frame.DispatchHelper"))
        ->executeDispatch(Need<com::sun::star::frame::XDispatchProvider>(frame), Ascii(command), rtl::OUString(), 0,
                          {});
}

void Toggle(const ProcessLink& connection, const Reference<com::sun::star::frame::XFrame2>& frame, const char* command,
            const char* argument, bool on) {
    Need<com::sun::star::frame::XDispatchHelper>(connection.Service("com.sun.star.frame.DispatchHelper"))
        ->executeDispatch(Need<com::sun::star::frame::XDispatchProvider>(frame), Ascii(command), rtl::OUString(), 0,
                          Properties({Property(argument, Any(on))}));
}

void Show(const Reference<com::sun::star::frame::XLayoutManager>& layout, const char* element, bool shown) {
    if (!shown) {
        layout->hideElement(Ascii(element));
        return;
    }
    layout->createElement(Ascii(element)); // one that was hidden from the start isn't there yet
    layout->showElement(Ascii(element));
}

/// Whether columns of like formulas are calculated whole, on all processors, or cell by cell as they are needed.
void CalculateWholeColumns(const ProcessLink& connection, bool whole) {
    const auto settings = Need<com::sun::star::lang::XMultiServiceFactory>(
        connection.Service("com.sun.star.configuration.ConfigurationProvider"));
    const Any place(Property("nodepath", Any(Ascii("/org.openoffice.Office.Calc/Formula/Calculation"))));
    const auto access = settings->createInstanceWithArguments(
        Ascii("com.sun.star.configuration.ConfigurationUpdateAccess"), Sequence<Any>(&place, 1));
    Need<com::sun::star::container::XNameReplace>(access)->replaceByName(
        Ascii("UseThreadedCalculationForFormulaGroups"), Any(whole));
    Need<com::sun::star::util::XChangesBatch>(access)->commitChanges();
}

/// True when there was one.
bool EndOpenDialogs(const ProcessLink& connection) {
    const auto toolkit = Need<com::sun::star::awt::XExtendedToolkit>(connection.Service("com.sun.star.awt.Toolkit"));
    bool found = false;
    for (sal_Int32 n = toolkit->getTopWindowCount() - 1; n >= 0; --n) {
        const Reference<com::sun::star::awt::XDialog2> dialog(toolkit->getTopWindow(n), com::sun::star::uno::UNO_QUERY);
        const Reference<com::sun::star::awt::XWindow2> window(dialog, com::sun::star::uno::UNO_QUERY);
        if (!window.is() || !window->isVisible()) continue;
        dialog->endDialog(0);
        found = true;
    }
    return found;
}

/// Heads, bars and marks in the colours of our own windows. What is made in the window later takes them over.
void SetColors(const Reference<com::sun::star::awt::XWindow>& window, const QPalette& palette) {
    const auto style = Need<com::sun::star::awt::XStyleSettingsSupplier>(window)->getStyleSettings();
    if (!style.is()) return;
    const auto color = [&palette](QPalette::ColorRole role) {
        return static_cast<sal_Int32>(palette.color(QPalette::Active, role).rgb() & 0xFFFFFFU);
    };
    style->setFaceColor(color(QPalette::Midlight));
    style->setButtonTextColor(color(QPalette::ButtonText));
    style->setHighlightColor(color(QPalette::Highlight));
    style->setHighlightTextColor(color(QPalette::HighlightedText));
    style->setLightColor(color(QPalette::Light));
    style->setShadowColor(color(QPalette::Mid));
    style->setDarkShadowColor(color(QPalette::Dark));
    style->setCheckedColor(color(QPalette::Mid)); // the way of a scroll bar
    style->setWorkspaceColor(color(QPalette::Window));
    style->setDialogColor(color(QPalette::Window));
    style->setDialogTextColor(color(QPalette::WindowText));
    style->setMenuBarTextColor(color(QPalette::WindowText));
}

} // namespace

HostedFrame::HostedFrame(quintptr window, const QSize& size, const QPalette& palette)
    : state_(std::make_unique<State>()) {
    state_->connection = SpreadsheetApplication::Hosted().connection();
    state_->palette = palette;
    state_->connection->Start();
    state_->generation = state_->connection->Generation();
    state_->connection->Run([&] {
        const auto factory =
            Need<com::sun::star::awt::XSystemChildFactory>(state_->connection->Service("com.sun.star.awt.Toolkit"));
        Sequence<sal_Int8> process(16);
        rtl_getGlobalProcessId(reinterpret_cast<sal_uInt8*>(process.getArray()));
        const auto peer = factory->createSystemChild(Any(static_cast<sal_Int64>(window)), process,
                                                     com::sun::star::lang::SystemDependent::SYSTEM_XWINDOW);
        state_->window = Need<com::sun::star::awt::XWindow>(peer);
        state_->window->setPosSize(0, 0, size.width(), size.height(), com::sun::star::awt::PosSize::POSSIZE);
        state_->frame = Need<com::sun::star::frame::XFrame2>(state_->connection->Service("com.sun.star.frame.Frame"));
        state_->frame->initialize(state_->window);
        com::sun::star::frame::Desktop::create(state_->connection->Context())
            ->getFrames()
            ->append(Need<com::sun::star::frame::XFrame>(state_->frame));
        state_->window->setVisible(true);
    });
}

HostedFrame::~HostedFrame() {
    Close();
}

void HostedFrame::GetReady() {
    state_->connection->Run([&] {
        SetColors(state_->window, state_->palette);
        KeepStatusBarToPreview(state_->connection, Need<com::sun::star::frame::XFrame>(state_->frame), state_->slides);
    });
}

Workbook HostedFrame::ShowWorkbook(const QString& file) {
    GetReady();
    state_->connection->Run([&] { CalculateWholeColumns(*state_->connection, false); });
    Workbook book(Document::Open(state_->connection, file, Document::kWorkbook,
                                 Need<com::sun::star::frame::XFrame>(state_->frame)));
    SetToolBars(false);
    return book;
}

SlideShow HostedFrame::ShowSlides(const QString& file) {
    state_->slides = true;
    GetReady();
    const auto frame = Need<com::sun::star::frame::XFrame>(state_->frame);
    SlideShow slides(file.isEmpty()
                         ? Document::New(state_->connection, "private:factory/simpress", Document::kSlides, frame)
                         : Document::Open(state_->connection, file, Document::kSlides, frame));
    if (file.isEmpty()) slides.SetFourToThree();
    SetToolBars(false);
    return slides;
}

void HostedFrame::OnSave(std::function<void(bool)> wanted) {
    state_->connection->Run([&] {
        state_->saveCommands =
            std::make_unique<SaveCommands>(Need<com::sun::star::frame::XFrame>(state_->frame), std::move(wanted));
    });
}

void HostedFrame::EndOnSave() noexcept {
    if (!state_->saveCommands) return;
    state_->saveCommands->Stop();
    state_->connection->Post(
        [commands = std::shared_ptr<SaveCommands>(std::move(state_->saveCommands))] { commands->Release(); });
}

// What is shown of the bars stays in the profile, so each opening says it anew.
void HostedFrame::SetToolBars(bool shown) {
    state_->connection->Run([&] {
        const auto layout = LayoutOf(Need<com::sun::star::frame::XFrame>(state_->frame));
        if (!layout.is()) return;
        layout->lock();
        // The document is closed by the form around it.
        Need<com::sun::star::beans::XPropertySet>(layout)->setPropertyValue("MenuBarCloser", Any(false));
        Toggle(*state_->connection, state_->frame, ".uno:Sidebar", "Sidebar", false);
        if (state_->slides) {
            layout->setVisible(shown);
        } else {
            Toggle(*state_->connection, state_->frame, ".uno:InputLineVisible", "InputLineVisible", false);
            layout->setVisible(true);
            layout->showElement(Ascii(kMenuBar));
            for (const char* bar : kBars)
                Show(layout, bar, shown);
        }
        layout->unlock();
    });
}

// The user may have changed it by the program's own menu.
bool HostedFrame::IsPrintPreview() const {
    bool preview = false;
    state_->connection->Run([&] { preview = !ShowsSheets(Need<com::sun::star::frame::XFrame>(state_->frame)); });
    return preview;
}

void HostedFrame::SetPrintPreview(bool shown) {
    state_->connection->Run(
        [&] { Dispatch(*state_->connection, state_->frame, shown ? ".uno:PrintPreview" : ".uno:ClosePreview"); });
    // The view may change a moment after it has been asked to.
    for (int looks = 0; looks < kViewLooks && IsPrintPreview() != shown; ++looks)
        std::this_thread::sleep_for(kNextLook);
}

// A cell that is being edited lives in the window alone; what leaves the cell enters it into the document.
void HostedFrame::TakeOverInput() {
    if (state_->slides) return;
    state_->connection->Run([&] { Dispatch(*state_->connection, state_->frame, ".uno:Deselect"); });
}

void HostedFrame::GetReadyToSave() {
    TakeOverInput();
    if (!state_->slides) state_->connection->Run([&] { CalculateWholeColumns(*state_->connection, true); });
}

void HostedFrame::EndDialogs() noexcept {
    if (state_->connection->Generation() != state_->generation || !state_->connection->IsRunning()) return;
    try {
        // A dialog is gone a moment after its end has been asked for, and may have been opened by another.
        state_->connection->Run([&] {
            for (int tries = 0; tries < kEndTries && EndOpenDialogs(*state_->connection); ++tries)
                std::this_thread::sleep_for(kNextLook);
        });
    } catch (const Error&) {
        // It died, and its dialogs with it.
    }
}

void HostedFrame::SetSize(const QSize& size) {
    if (state_->connection->Generation() != state_->generation) return;
    state_->connection->Post([window = state_->window, size] {
        if (window.is()) window->setPosSize(0, 0, size.width(), size.height(), com::sun::star::awt::PosSize::POSSIZE);
    });
}

void HostedFrame::Close() noexcept {
    EndOnSave();
    if (!state_->frame.is()) return;
    const bool alive = state_->connection->Generation() == state_->generation && state_->connection->IsRunning();
    const auto close = [frame = std::move(state_->frame), window = std::move(state_->window), alive] {
        if (!alive) return;
        Need<com::sun::star::util::XCloseable>(frame)->close(true);
    };
    state_->frame.clear();
    state_->window.clear();
    // The window of ours that it lies in goes next, so this one has to be gone before.
    try {
        if (alive) state_->connection->Run(close);
    } catch (const Error&) {
        // It died, and its window with it.
    }
}

} // namespace tessaro::office
