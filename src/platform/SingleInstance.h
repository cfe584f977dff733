#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace tessaro {

/// One running program per user and writable home. A lock file in the home's own folder decides; it is free again when
/// its owner is gone, also after a crash. A socket beside it lets a later start ask the running one to come to the
/// front. Other users can neither take the two nor be heard.
class SingleInstance final {
  public:
    /// `home` is the folder that instances share (WritableHome()); made when it is missing, with the private folder
    /// Tessaro in it. When that can't be had, a socket without a file decides.
    explicit SingleInstance(const QString& home);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    [[nodiscard]] bool isFirst() const;
    /// Asks the first instance to come to the front; False when it doesn't listen.
    bool RaiseFirst() const;
    /// In the first instance: what to do when another start asks. Needs a running event loop.
    void SetRaiseHandler(std::function<void()> handler);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace tessaro
