#include "office/SaveCommands.h"

#include "office/Convert.h"

#include <cppuhelper/implbase2.hxx>
#include <mutex>

namespace tessaro::office {

using namespace com::sun::star::frame;
using com::sun::star::beans::PropertyValue;
using com::sun::star::uno::Reference;
using com::sun::star::uno::Sequence;
using com::sun::star::util::URL;

struct SaveCommands::Listener {
    std::mutex mutex;
    std::function<void(bool)> wanted;
};

namespace {

constexpr char kSave[] = ".uno:Save";
constexpr char kSaveAs[] = ".uno:SaveAs";

/// Stands before the frame's own commands; those that aren't taken go on to them.
template <class Listener>
class Interceptor final : public cppu::WeakImplHelper2<XDispatchProviderInterceptor, XDispatch> {
  public:
    explicit Interceptor(std::shared_ptr<Listener> listener) : listener_(std::move(listener)) {}

    Reference<XDispatch> SAL_CALL queryDispatch(const URL& url, const rtl::OUString& target, sal_Int32 flags) override {
        if (url.Complete == kSave || url.Complete == kSaveAs) return this;
        return slave_.is() ? slave_->queryDispatch(url, target, flags) : Reference<XDispatch>();
    }
    Sequence<Reference<XDispatch>> SAL_CALL queryDispatches(const Sequence<DispatchDescriptor>& requests) override {
        Sequence<Reference<XDispatch>> found(requests.getLength());
        for (sal_Int32 n = 0; n < requests.getLength(); ++n)
            found.getArray()[n] = queryDispatch(requests[n].FeatureURL, requests[n].FrameName, requests[n].SearchFlags);
        return found;
    }
    Reference<XDispatchProvider> SAL_CALL getSlaveDispatchProvider() override { return slave_; }
    void SAL_CALL setSlaveDispatchProvider(const Reference<XDispatchProvider>& slave) override { slave_ = slave; }
    Reference<XDispatchProvider> SAL_CALL getMasterDispatchProvider() override { return master_; }
    void SAL_CALL setMasterDispatchProvider(const Reference<XDispatchProvider>& master) override { master_ = master; }

    void SAL_CALL dispatch(const URL& url, const Sequence<PropertyValue>& /*arguments*/) override {
        const std::lock_guard lock(listener_->mutex);
        if (listener_->wanted) listener_->wanted(url.Complete == kSaveAs);
    }
    // The commands are always there, so nobody needs to be told of their state.
    void SAL_CALL addStatusListener(const Reference<XStatusListener>& /*control*/, const URL& /*url*/) override {}
    void SAL_CALL removeStatusListener(const Reference<XStatusListener>& /*control*/, const URL& /*url*/) override {}

  private:
    std::shared_ptr<Listener> listener_;
    Reference<XDispatchProvider> slave_;
    Reference<XDispatchProvider> master_;
};

} // namespace

SaveCommands::SaveCommands(const Reference<XFrame>& frame, std::function<void(bool)> wanted)
    : listener_(std::make_shared<Listener>()), frame_(Need<XDispatchProviderInterception>(frame)),
      interceptor_(new Interceptor<Listener>(listener_)) {
    listener_->wanted = std::move(wanted);
    frame_->registerDispatchProviderInterceptor(interceptor_);
}

SaveCommands::~SaveCommands() {
    Stop();
}

void SaveCommands::Stop() {
    const std::lock_guard lock(listener_->mutex);
    listener_->wanted = {};
}

// A frame that is taken down tells whoever stands before its commands, and waits for the answer under the program's one
// lock. What sends the message may itself wait for that lock, to let go a button of the bars: then neither goes on.
void SaveCommands::Release() {
    if (frame_.is()) frame_->releaseDispatchProviderInterceptor(interceptor_);
    frame_.clear();
    interceptor_.clear();
}

} // namespace tessaro::office
