#pragma once

#include <com/sun/star/frame/XDispatchProviderInterception.hpp>
#include <com/sun/star/frame/XDispatchProviderInterceptor.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <functional>
#include <memory>

namespace tessaro::office {

/// Takes the program's own commands "Save" and "Save As" in one of its frames, by key, menu or bar, and tells that they
/// were given instead. On the worker thread, but for Stop.
class SaveCommands final {
  public:
    /// `wanted` is called on a thread of the bridge, with true for "Save As".
    SaveCommands(const com::sun::star::uno::Reference<com::sun::star::frame::XFrame>& frame,
                 std::function<void(bool)> wanted);
    ~SaveCommands();
    SaveCommands(const SaveCommands&) = delete;
    SaveCommands& operator=(const SaveCommands&) = delete;

    /// After it has come back `wanted` is not called any more; on any thread.
    void Stop();
    /// Gives the frame its own commands back. To be done before its document is closed.
    void Release();

  private:
    struct Listener;
    std::shared_ptr<Listener> listener_;
    com::sun::star::uno::Reference<com::sun::star::frame::XDispatchProviderInterception> frame_;
    com::sun::star::uno::Reference<com::sun::star::frame::XDispatchProviderInterceptor> interceptor_;
};

} // namespace tessaro::office
