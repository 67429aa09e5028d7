#pragma once

#include <QString>

#include <memory>
#include <stdexcept>

namespace tarvex {

/// A document that cannot be read as a template or written as a merged copy, in the
/// breeder's words.
class DocumentError : public std::runtime_error
{
public:
    explicit DocumentError(const QString &message) : std::runtime_error(message.toStdString()) {}
    QString message() const { return QString::fromStdString(what()); }
};

/// A word-processor document opened as a template for a merge: a .docx (the format Word
/// writes) or an .odt (the format LibreOffice writes), read into memory and filled there.
/// The template's file is never written; save() writes the merged copy elsewhere.
///
/// Placeholders are plain words the breeder typed ("Gen2.Name"). They are found where the
/// word processor keeps text: in the body and its tables, in text frames and text boxes, and
/// in headers and footers, in that order, and found even where the word processor split the
/// word over several runs of formatting (the replacement takes the first run's formatting).
/// A placeholder is a whole word: "Gen1.Id" is not found inside "Gen1.Id2". Letter case is
/// not compared.
class TemplateDocument
{
public:
    enum class Format { Docx, Odt };

    /// Reads the template. Throws DocumentError when it is not such a document (a document
    /// protected by a password cannot be read either).
    static std::unique_ptr<TemplateDocument> open(const QString &path);
    ~TemplateDocument();

    Format format() const;
    /// Whether the text is anywhere in the document.
    bool contains(const QString &text) const;
    /// Replaces the first occurrence still there; false when there is none.
    bool replaceNext(const QString &text, const QString &value);
    /// Puts a picture in place of the first occurrence still there, at most 4 cm wide and
    /// high; a picture that cannot be read leaves a blank. False when there is no occurrence.
    bool pictureNext(const QString &text, const QString &picturePath);
    /// Writes the merged document, whole or not at all (a temporary file is renamed into
    /// place). Throws DocumentError.
    void save(const QString &path);

private:
    TemplateDocument();
    struct Impl;
    std::unique_ptr<Impl> d;
};

} // namespace tarvex
