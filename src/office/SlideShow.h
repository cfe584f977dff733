#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

namespace tessaro::office {

class Document;

/// One open slide show of the slides program, 4:3 when it is new. Every function throws Error.
class SlideShow final {
  public:
    SlideShow() = default;
    explicit SlideShow(std::shared_ptr<Document> document);

    [[nodiscard]] bool IsOpen() const;
    [[nodiscard]] QString FileName() const;
    [[nodiscard]] int SlideCount() const;
    /// A blank slide at the end with pictures (EMF, PNG) below each other in its middle, as large as fits with a
    /// margin, proportions kept, all in one scale. Gives its number, from 1.
    int AppendPictures(const QList<QByteArray>& pictures);
    /// Takes the first slide away when it is empty, as a new show has one.
    void RemoveSlide(int number);
    /// Brings a slide to view in a shown slide show.
    void GoToSlide(int number);
    [[nodiscard]] bool IsModified() const;
    /// True ".ppt".
    void Save();
    void SaveAs(const QString& file);
    void Close();

    /// Blank 4:3 pages, as a new show gets them.
    void SetFourToThree();

    /// For the classes of this room.
    [[nodiscard]] const std::shared_ptr<Document>& document() const { return document_; }

  private:
    std::shared_ptr<Document> document_;
};

} // namespace tessaro::office
