#pragma once

#include "platform/Files.h"

#include <QByteArray>
#include <QSaveFile>
#include <QString>

#include <vector>

namespace tessaro {

/// A file that is written piece by piece, and stands under its name only when it is complete.
class ValueFile final {
  public:
    explicit ValueFile(const QString& path) : file_(path), good_(file_.open(QIODevice::WriteOnly)) {}

    void Write(const QByteArray& bytes) { good_ = good_ && file_.write(bytes) == bytes.size(); }
    /// False since something could not be written.
    [[nodiscard]] bool IsGood() const { return good_; }
    /// False when something could not be written. The files beside it stand with it, or none of them does.
    [[nodiscard]] bool Finish(const std::vector<NewFile>& beside = {});

  private:
    QSaveFile file_;
    bool good_;
};

} // namespace tessaro
