#pragma once

#include <QString>

#include <memory>

namespace kb {

// A picture mask of an entry field, the form the agency settings give for
// postal codes, telephones and social security numbers:
//   #  a digit             ?  a letter         &  a letter, made upper case
//   ~  a letter, made lower case                @  any character
//   !  any character, made upper case           ;x the character x itself
//   [...]  an optional part                     {a,b,...}  one of the parts
//   *n     the next element n times; * alone any number of times
// Any other character stands for itself. An empty picture takes anything.
//
// Pictures and entries are short; a picture nests at most 16 deep and an
// entry is checked up to 256 characters, so hostile input cannot make the
// check run away.
class EditMask
{
public:
    enum class Fit {
        Complete,   // the entry is a whole value of the picture
        Incomplete, // the entry is the start of one, something is missing
        Invalid,    // no value of the picture starts like this
    };

    // Throws MessageError for a picture that cannot be read.
    explicit EditMask(const QString& picture);
    ~EditMask();
    EditMask(EditMask&&) noexcept;
    EditMask& operator=(EditMask&&) noexcept;

    const QString& picture() const { return m_picture; }
    bool isEmpty() const { return m_picture.isEmpty(); }

    // How an entry fits; an empty entry always fits (the field is empty).
    Fit fit(const QString& entry) const;
    // The entry as the picture stores it (letters cased as the picture
    // says); the entry itself when it does not fit.
    QString normalized(const QString& entry) const;

    struct Node;

private:
    QString m_picture;
    std::unique_ptr<Node> m_root;
};

} // namespace kb
