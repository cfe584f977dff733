#pragma once

#include <QList>
#include <QString>

#include <utility>

/// Cuts the markup of an information sheet into tags and texts.
namespace tessaro::metadata {

/// A piece of markup: a text (entities as they stand), or a tag with its attributes.
struct MarkupPiece {
    QString text;
    QString tag; ///< name in lower case; empty for a text
    bool closing = false;
    QList<std::pair<QString, QString>> attributes;
};

/// Splits markup into pieces, however malformed it is. Comments, declarations, scripts and style sheets are left out.
class MarkupScanner final {
  public:
    explicit MarkupScanner(const QString& source) : source_(source) {}
    [[nodiscard]] bool atEnd() const { return place_ >= source_.size(); }
    [[nodiscard]] MarkupPiece Next();

  private:
    [[nodiscard]] QChar At(qsizetype offset) const;
    void SkipPast(const QString& end);
    void SkipBlanks();
    [[nodiscard]] MarkupPiece Tag();
    [[nodiscard]] std::pair<QString, QString> Attribute();
    [[nodiscard]] QString Name();
    [[nodiscard]] QString Value();

    const QString& source_;
    qsizetype place_ = 0;
};

} // namespace tessaro::metadata
