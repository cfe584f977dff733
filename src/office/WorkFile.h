#pragma once

#include <QString>
#include <QTemporaryDir>

namespace tessaro::office {

/// A file that is written beside its target and then takes its place, so that the old one stays until the new one is
/// whole. A link's target is replaced, not the link; the old file's permissions are kept.
class WorkFile final {
  public:
    /// Failure::File when nothing can be written under this name.
    explicit WorkFile(const QString& target);
    /// Where to write to: in a folder of its own beside the target, since a process that dies while it writes leaves
    /// work files of its own behind. What didn't take the target's place goes with this object.
    [[nodiscard]] const QString& Name() const { return name_; }
    /// True when there is something under this name. What a filter wrote under a longer one ("new-Sheet2", which may be
    /// empty) gets this name first.
    [[nodiscard]] bool IsWritten() const;
    /// Failure::File when it can't take the target's place.
    void Replace();

  private:
    QString target_;
    QTemporaryDir folder_;
    QString name_;
};

} // namespace tessaro::office
