#include "platform/SingleInstance.h"

#include "platform/Home.h"
#include "platform/Paths.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLockFile>
#include <QSocketNotifier>

#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace tessaro {

namespace {

/// Address of the socket of one user and home: a name without a file, which the kernel frees with its owner.
std::pair<sockaddr_un, socklen_t> AddressOf(const QString& home) {
    const QByteArray mark =
        QCryptographicHash::hash((UserMark() + QLatin1Char(':') + home).toUtf8(), QCryptographicHash::Sha1);
    const QByteArray name = QByteArray(1, '\0') + "tessaro-" + mark.toHex();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    return {address, static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()))};
}

class Socket final {
  public:
    Socket() : descriptor_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
    explicit Socket(int descriptor) : descriptor_(descriptor) {}
    ~Socket() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    [[nodiscard]] int descriptor() const { return descriptor_; }

  private:
    int descriptor_;
};

/// Anybody may connect to a name without a file; only this user's own programs are heard.
bool IsOwnUser(int connection) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}

} // namespace

struct SingleInstance::Impl {
    QString home;
    std::unique_ptr<QLockFile> lock;
    Socket listener;
    std::unique_ptr<QSocketNotifier> notifier;
    bool first = false;

    bool Listen() {
        const auto [address, length] = AddressOf(home);
        return ::bind(listener.descriptor(), reinterpret_cast<const sockaddr*>(&address), length) == 0 &&
               ::listen(listener.descriptor(), 4) == 0;
    }
};

SingleInstance::SingleInstance(const QString& home) : impl_(std::make_unique<Impl>()) {
    QDir().mkpath(home);
    const QString canonical = QDir(home).canonicalPath();
    impl_->home = canonical.isEmpty() ? home : canonical;
    impl_->lock =
        std::make_unique<QLockFile>(JoinPath({impl_->home, QStringLiteral(".tessaro-%1.lock").arg(UserMark())}));
    impl_->lock->setStaleLockTime(0); // a lock is stale only when its process is gone, however old it is
    const bool locked = impl_->lock->tryLock(0);
    const bool heldByAnother = !locked && impl_->lock->error() == QLockFile::LockFailedError;
    const bool listening = !heldByAnother && impl_->Listen();
    impl_->first = locked || (!heldByAnother && listening);
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::isFirst() const {
    return impl_->first;
}

bool SingleInstance::RaiseFirst() const {
    const Socket caller;
    const auto [address, length] = AddressOf(impl_->home);
    return ::connect(caller.descriptor(), reinterpret_cast<const sockaddr*>(&address), length) == 0;
}

void SingleInstance::SetRaiseHandler(std::function<void()> handler) {
    if (!impl_->first || impl_->listener.descriptor() < 0) return;
    impl_->notifier = std::make_unique<QSocketNotifier>(impl_->listener.descriptor(), QSocketNotifier::Read);
    QObject::connect(impl_->notifier.get(), &QSocketNotifier::activated, impl_->notifier.get(),
                     [listener = impl_->listener.descriptor(), handler = std::move(handler)] {
                         const Socket connection(::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
                         if (connection.descriptor() >= 0 && IsOwnUser(connection.descriptor()) && handler) handler();
                     });
}

} // namespace tessaro
