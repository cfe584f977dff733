#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

namespace tessaro {

/// Measures how long the window took no events. Each gap over a second is printed as "gap MILLISECONDS WHAT".
class Heartbeat final {
  public:
    Heartbeat();

    /// What is done from now on, for the report.
    void Doing(const QString& what) { what_ = what; }
    /// Milliseconds of the longest gap so far, the one that goes on included.
    [[nodiscard]] qint64 Longest();

  private:
    void Beat();

    QTimer timer_;
    QElapsedTimer sinceBeat_;
    qint64 longest_ = 0;
    QString what_;
};

} // namespace tessaro
