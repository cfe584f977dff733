#include "gallery/Thumbnails.h"

#include "gallery/PictureType.h"
#include "platform/Paths.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QSaveFile>
#include <QTemporaryDir>

#include <algorithm>

namespace tessaro {

namespace {

constexpr std::size_t kBatch = 6;
constexpr std::size_t kMostWaiting = 48; ///< more than a screen holds: the rest has been scrolled past
constexpr int kDelay = 400;              ///< milliseconds; opening a workbook comes first
constexpr int kMostKept = 5000;
constexpr int kMargin = 8; ///< pixels of the page around what is on it

bool Keep(const QImage& picture, const QString& file) {
    QSaveFile out(file);
    return out.open(QIODevice::WriteOnly) && picture.save(&out, "PNG") && out.commit();
}

} // namespace

Thumbnails::Thumbnails(QString folder, const QString& profile, QObject* parent)
    : QObject(parent), folder_(std::move(folder)), pages_(profile), shown_(400) {
    QDir().mkpath(folder_);
    pool_.setMaxThreadCount(1);
    pool_.start([this] { Sweep(); });
    delay_.setSingleShot(true);
    delay_.setInterval(kDelay);
    connect(&delay_, &QTimer::timeout, this, &Thumbnails::StartBatch);
    connect(&pages_, &office::PagePictures::Finished, this, &Thumbnails::TakeBatch);
}

Thumbnails::~Thumbnails() {
    pool_.waitForDone();
}

QString Thumbnails::KeyOf(const QString& path, const GalleryEntry& entry) {
    const QString state = QStringLiteral("%1|%2|%3").arg(path).arg(entry.modified.toMSecsSinceEpoch()).arg(entry.size);
    return QString::fromLatin1(QCryptographicHash::hash(state.toUtf8(), QCryptographicHash::Sha1).toHex());
}

QString Thumbnails::FileOf(const QString& key) const {
    return folder_ + QLatin1Char('/') + key + QStringLiteral(".png");
}

QImage Thumbnails::Picture(const QString& folder, const GalleryEntry& entry) {
    const QString path = JoinPath({folder, entry.file});
    const QString key = KeyOf(path, entry);
    if (const QImage* picture = shown_.object(key)) return *picture;
    if (failed_.contains(key)) return {};
    QImage kept;
    if (kept.load(FileOf(key))) {
        shown_.insert(key, new QImage(kept));
        return kept;
    }
    const auto same = [&](const Job& job) { return job.key == key; };
    if (std::any_of(batch_.begin(), batch_.end(), same)) return {};
    waiting_.erase(std::remove_if(waiting_.begin(), waiting_.end(), same), waiting_.end());
    waiting_.push_back({path, key});
    if (waiting_.size() > kMostWaiting) waiting_.erase(waiting_.begin());
    if (!delay_.isActive()) delay_.start();
    return {};
}

void Thumbnails::StartBatch() {
    if (pages_.IsBusy() || !batch_.empty() || waiting_.empty()) return;
    place_ = std::make_shared<QTemporaryDir>();
    if (!place_->isValid()) return waiting_.clear();
    QStringList files;
    while (!waiting_.empty() && batch_.size() < kBatch) {
        batch_.push_back(waiting_.back());
        files << waiting_.back().path;
        waiting_.pop_back();
    }
    pages_.Draw(files, place_->path());
}

/// Pictures are read, cut and written apart from the window's thread.
void Thumbnails::TakeBatch(bool complete) {
    pool_.start([this, complete, batch = batch_, place = place_] {
        QStringList failed;
        bool stopped = false;
        for (std::size_t n = 0; n < batch.size() && !stopped; ++n) {
            QImage page;
            if (page.load(place->filePath(QStringLiteral("%1.png").arg(n)))) {
                if (Keep(Cut(page), FileOf(batch[n].key))) continue;
            } else {
                stopped = !complete; // this file ended the process; those after it were not tried
            }
            failed << batch[n].key;
        }
        QMetaObject::invokeMethod(
            this, [this, failed] { BatchDone(failed); }, Qt::QueuedConnection);
    });
}

void Thumbnails::BatchDone(const QStringList& failed) {
    for (const QString& key : failed)
        failed_.insert(key);
    batch_.clear();
    place_.reset();
    Q_EMIT Changed(); // the list asks again for those that are in sight and still missing
    if (!waiting_.empty()) delay_.start();
}

QImage Thumbnails::Cut(const QImage& page) {
    QImage picture(Size, QImage::Format_RGB32);
    picture.fill(Qt::white);
    const QImage plain = page.convertToFormat(QImage::Format_ARGB32);
    const QRect ink = InkOf(plain);
    if (ink.isNull()) return picture;
    // A long table shows its head.
    QRect part = ink.adjusted(-kMargin, -kMargin, kMargin, kMargin) & plain.rect();
    part.setHeight(std::min(part.height(), std::max(part.width() * Size.height() / Size.width(), 1)));
    const QSize shown = part.size().scaled(Size, Qt::KeepAspectRatio);
    QPainter painter(&picture);
    painter.drawImage(QPoint((Size.width() - shown.width()) / 2, (Size.height() - shown.height()) / 2),
                      plain.copy(part).scaled(shown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    return picture;
}

/// Removes old pictures: those of files that have changed or gone are never asked for again.
void Thumbnails::Sweep() {
    const QFileInfoList kept = QDir(folder_).entryInfoList({QStringLiteral("*.png")}, QDir::Files, QDir::Time);
    for (qsizetype n = kMostKept; n < kept.size(); ++n)
        QFile::remove(kept.at(n).filePath());
}

} // namespace tessaro
