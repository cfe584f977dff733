#pragma once

#include <QFile>
#include <QString>

namespace tessaro {

/// A file that is removed again unless its maker comes to the end.
class UnfinishedFile final {
  public:
    explicit UnfinishedFile(QString path) : path_(std::move(path)) {}
    ~UnfinishedFile() {
        if (!kept_) QFile::remove(path_);
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    [[nodiscard]] const QString& Path() const { return path_; }
    void Keep() { kept_ = true; }

  private:
    QString path_;
    bool kept_ = false;
};

} // namespace tessaro
