#pragma once

#include "gallery/GalleryFolder.h"
#include "office/PagePictures.h"

#include <QCache>
#include <QImage>
#include <QSet>
#include <QThreadPool>
#include <QTimer>

#include <memory>

class QTemporaryDir;

namespace tessaro {

/// Small pictures of workbooks. Each is drawn once for a state of its file (path, time and size) and kept on the disk.
/// Missing ones are drawn in the background, a few at a time, those asked for last first.
class Thumbnails final : public QObject {
    Q_OBJECT

  public:
    /// Size of every picture in pixels, three times its size on the screen.
    static constexpr QSize Size{216, 144};

    /// `folder` keeps the pictures, `profile` belongs to the program that draws them.
    Thumbnails(QString folder, const QString& profile, QObject* parent = nullptr);
    ~Thumbnails() override;

    /// The picture of a workbook; null when there is none, or none yet: the signal Changed follows when it is ready.
    [[nodiscard]] QImage Picture(const QString& folder, const GalleryEntry& entry);
    /// Forgets the pictures that wait to be drawn, when the list shows another folder.
    void ForgetWaiting() { waiting_.clear(); }

    /// File name under which the picture of a file in its current state is kept.
    [[nodiscard]] static QString KeyOf(const QString& path, const GalleryEntry& entry);
    /// The part of a page that is shown in a small picture: the upper left, without the margins.
    [[nodiscard]] static QImage Cut(const QImage& page);

  Q_SIGNALS:
    void Changed();

  private:
    struct Job {
        QString path;
        QString key;
    };
    void StartBatch();
    void TakeBatch(bool complete);
    void BatchDone(const QStringList& failed);
    void Sweep();
    [[nodiscard]] QString FileOf(const QString& key) const;

    QString folder_;
    office::PagePictures pages_;
    QCache<QString, QImage> shown_;
    QSet<QString> failed_; ///< can't be drawn; not tried again in this run
    std::vector<Job> waiting_;
    std::vector<Job> batch_;
    std::shared_ptr<QTemporaryDir> place_; ///< of the batch
    QTimer delay_;
    QThreadPool pool_;
};

} // namespace tessaro
