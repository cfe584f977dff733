#pragma once

#include <QByteArray>

#include <map>
#include <shapefil.h>
#include <string>

namespace tessaro {

/// Files in memory that shapelib reads as if they lay on disk: each name is an ending without its point ("shp"). While
/// one is alive, the hooks of this thread open its files; others don't exist for them, and nothing is written.
class MemoryFiles final {
  public:
    explicit MemoryFiles(const std::map<std::string, QByteArray>& files);
    ~MemoryFiles();
    MemoryFiles(const MemoryFiles&) = delete;
    MemoryFiles& operator=(const MemoryFiles&) = delete;

    [[nodiscard]] SAHooks* Hooks() { return &hooks_; }

  private:
    SAHooks hooks_{};
};

} // namespace tessaro
