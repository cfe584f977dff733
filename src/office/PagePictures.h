#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <memory>

class QProcess;

namespace tessaro::office {

/// Draws the first pages of workbooks as pictures, by a process and a profile of its own that run beside everything
/// else: nothing here waits. The process ends after each batch, and with this program; one that takes too much time for
/// a file, or too much memory, is ended.
class PagePictures final : public QObject {
    Q_OBJECT

  public:
    /// `profile`: folder of the process's profile.
    explicit PagePictures(QString profile, QObject* parent = nullptr);
    /// Ends the process.
    ~PagePictures() override;

    /// Draws files into a folder of the caller's, as "0.png", "1.png" … in their order; what can't be drawn is missing.
    /// One batch at a time. Finished is told in any case, from the event loop.
    void Draw(const QStringList& files, const QString& folder);
    [[nodiscard]] bool IsBusy() const { return busy_; }

  Q_SIGNALS:
    /// `complete`: every file was tried. Otherwise the process had to be ended, at the first picture that is missing.
    void Finished(bool complete);

  private:
    void Start();
    void Watch(const QPointer<QProcess>& process, qsizetype drawn);
    void Ended(bool clean);

    QString profile_;
    QStringList arguments_;
    QString folder_; ///< that the pictures go to
    std::unique_ptr<QProcess> process_;
    int starts_ = 0;
    bool busy_ = false;
};

} // namespace tessaro::office
