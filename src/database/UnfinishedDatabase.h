#pragma once

#include <QString>

namespace tessaro {

/// A database file that is made beside its name, so that it is there whole or not at all. What stands under the name
/// stays until Finish puts the new file in its place; without Finish nothing is left behind.
class UnfinishedDatabase final {
  public:
    /// `target` may be a link to a file; that file is what is replaced.
    explicit UnfinishedDatabase(const QString& target);
    ~UnfinishedDatabase();
    UnfinishedDatabase(const UnfinishedDatabase&) = delete;
    UnfinishedDatabase& operator=(const UnfinishedDatabase&) = delete;

    /// Where the file is made. Nothing stands there at first.
    [[nodiscard]] const QString& Path() const { return path_; }
    /// Puts the file in place, with the rights of a file that the user makes. No connection may be open to it. False
    /// when that can't be done: what stood there stays.
    [[nodiscard]] bool Finish();

  private:
    void Remove() const;

    QString target_;
    QString path_;
};

} // namespace tessaro
