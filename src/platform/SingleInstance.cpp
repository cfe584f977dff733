#include "platform/SingleInstance.h"

#include "platform/Home.h"
#include "platform/Paths.h"
#include "platform/Rights.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QSocketNotifier>

#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace tessaro {

namespace {

constexpr char kSocketName[] = "instance.socket";

class Descriptor final {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int number() const { return number_; }

  private:
    int number_;
};

int NewSocket() {
    return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

using Address = std::pair<sockaddr_un, socklen_t>;

Address AddressOf(const QByteArray& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(),
                std::min(static_cast<std::size_t>(name.size()), sizeof address.sun_path));
    return {address, static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()))};
}

/// The socket's file, by way of its open folder: the path itself may be longer than an address can hold.
Address AddressIn(const Descriptor& folder) {
    return AddressOf(QByteArray("/proc/self/fd/") + QByteArray::number(folder.number()) + '/' + kSocketName);
}

/// Where no file can be made: a name that the kernel frees with its owner. Other users may take it.
Address AddressWithoutFile(const QString& home) {
    const QByteArray mark =
        QCryptographicHash::hash((UserMark() + QLatin1Char(':') + home).toUtf8(), QCryptographicHash::Sha1);
    return AddressOf(QByteArray(1, '\0') + "tessaro-" + mark.toHex());
}

bool IsOwnUser(int connection) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}

/// True when a program of this user listens there. Never waits.
bool Reach(const Address& address) {
    const Descriptor caller(NewSocket());
    return ::connect(caller.number(), reinterpret_cast<const sockaddr*>(&address.first), address.second) == 0 &&
           IsOwnUser(caller.number());
}

} // namespace

struct SingleInstance::Impl {
    QString place; ///< the folder of ours that instances share
    Descriptor folder;
    Descriptor listener{NewSocket()};
    Address address;
    std::unique_ptr<QLockFile> lock;
    std::unique_ptr<QSocketNotifier> notifier;
    bool first = false;

    Impl(const QString& home, const QString& own, bool isOurs)
        : place(own),
          folder(isOurs ? ::open(QFile::encodeName(own).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC) : -1),
          address(folder.number() >= 0 ? AddressIn(folder) : AddressWithoutFile(home)) {}

    void Listen() const {
        if (::bind(listener.number(), reinterpret_cast<const sockaddr*>(&address.first), address.second) == 0)
            ::listen(listener.number(), 4);
    }
    /// The lock decides. A socket that is still there then is a dead run's.
    void StartByLock() {
        lock = std::make_unique<QLockFile>(JoinPath({place, QStringLiteral("instance.lock")}));
        lock->setStaleLockTime(0); // a lock is stale only when its process is gone, however old it is
        const bool locked = lock->tryLock(0);
        first = locked || (lock->error() != QLockFile::LockFailedError && !Reach(address));
        if (!first) return;
        ::unlinkat(folder.number(), kSocketName, 0);
        Listen();
    }
    void StartBySocket() {
        first = !Reach(address);
        if (first) Listen();
    }
    void Leave() const {
        if (first && folder.number() >= 0) ::unlinkat(folder.number(), kSocketName, 0);
    }
};

SingleInstance::SingleInstance(const QString& home) {
    const QString own = JoinPath({home, QStringLiteral("Tessaro")});
    const bool isOurs = MakePrivateFolder(own);
    const QString canonical = QDir(home).canonicalPath();
    impl_ = std::make_unique<Impl>(canonical.isEmpty() ? home : canonical, own, isOurs);
    if (impl_->folder.number() >= 0)
        impl_->StartByLock();
    else
        impl_->StartBySocket();
}

SingleInstance::~SingleInstance() {
    impl_->Leave();
}

bool SingleInstance::isFirst() const {
    return impl_->first;
}

bool SingleInstance::RaiseFirst() const {
    return Reach(impl_->address);
}

void SingleInstance::SetRaiseHandler(std::function<void()> handler) {
    if (!impl_->first || impl_->listener.number() < 0) return;
    impl_->notifier = std::make_unique<QSocketNotifier>(impl_->listener.number(), QSocketNotifier::Read);
    QObject::connect(impl_->notifier.get(), &QSocketNotifier::activated, impl_->notifier.get(),
                     [listener = impl_->listener.number(), handler = std::move(handler)] {
                         const Descriptor connection(::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
                         if (connection.number() >= 0 && IsOwnUser(connection.number()) && handler) handler();
                     });
}

} // namespace tessaro
