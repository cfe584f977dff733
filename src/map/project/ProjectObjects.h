#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace tessaro {

/// An object of a project that others refer to.
struct ObjectRef {
    int place = -1;
};

/// The objects of a project file, in the order of writing. Each begun object gets the next number, from 1 on; a
/// reference may be written before its object is begun. Labels are written as given: name, colon and blanks.
class ProjectObjects final {
  public:
    /// An object that is begun later.
    [[nodiscard]] ObjectRef Announce();
    void Begin(ObjectRef object, const char* className);
    ObjectRef Begin(const char* className);

    // Attributes of the object that was begun last.
    void Put(const char* attribute); ///< label and value
    void Put(const char* label, const QString& text);
    void Put(const char* label, int number);
    void Put(const char* label, double number); ///< with 14 decimals
    void Put(const char* label, ObjectRef object);

    /// The number of an object that was begun; 0 before.
    [[nodiscard]] int NumberOf(ObjectRef object) const { return numbers_[static_cast<std::size_t>(object.place)]; }
    /// The whole file in the code page of a character set, with lines of at most 512 bytes: longer ones go on in the
    /// next, as the format has it.
    [[nodiscard]] QByteArray Bytes(int charset) const;

  private:
    struct Line {
        QString text;
        ObjectRef object; ///< whose number ends the line; none
    };
    std::vector<int> numbers_;
    std::vector<Line> lines_;
    int begun_ = 0;
};

} // namespace tessaro
