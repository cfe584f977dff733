#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <memory>
#include <string>
#include <vector>

struct UConverter;

namespace tessaro {

/// A text that is read piece by piece, as UTF-8 without a byte-order mark.
class TextSource {
  public:
    virtual ~TextSource() = default;
    /// Puts the next piece in place of what `piece` holds; false at the end. Throws ReadError.
    virtual bool Read(std::string& piece) = 0;
    [[nodiscard]] virtual int Percent() const = 0;
};

/// A text that is in memory already.
class TextInMemory final : public TextSource {
  public:
    explicit TextInMemory(std::string text) : text_(std::move(text)) {}
    bool Read(std::string& piece) override;
    [[nodiscard]] int Percent() const override { return 100; }

  private:
    std::string text_;
};

/// A file in any encoding that ICU knows. Bytes that mean nothing in it become U+FFFD.
class TextFile final : public TextSource {
  public:
    /// Throws ReadError when the file can't be opened or the encoding is unknown.
    TextFile(const QString& path, const QByteArray& encoding);
    ~TextFile() override;
    bool Read(std::string& piece) override;
    [[nodiscard]] int Percent() const override;

  private:
    void Convert(const char* bytes, qint64 count, bool last, std::string& piece);

    QFile file_;
    std::unique_ptr<UConverter, void (*)(UConverter*)> converter_;
    std::vector<char> bytes_;
    std::vector<char16_t> letters_;
    bool keepsPlain_; ///< pieces of plain ASCII are what they will be
    bool begun_ = false;
    bool ended_ = false;
};

/// The first bytes of a file. Throws ReadError.
[[nodiscard]] QByteArray BeginningOf(const QString& path, qint64 bytes);
/// The first of them as UTF-8.
[[nodiscard]] std::string TextOf(const QByteArray& bytes, const QByteArray& encoding);

} // namespace tessaro
