#pragma once

#include "core/Progress.h"
#include "core/Prompts.h"
#include "core/Session.h"
#include "pedigree/PedigreeTable.h"

#include <QString>
#include <QStringList>

#include <stdexcept>

namespace tarvex {

/// A failure of the word processor, with its number and words.
class WordError : public std::runtime_error
{
public:
    /// The numbers the merge gives: the file is not there, cannot be written, or is not a
    /// document the word processor can read.
    enum Code { FileNotFound = 53, FileAccess = 75, NotADocument = 5792 };

    WordError(int number, const QString &description, bool gone = false)
        : std::runtime_error(description.toStdString()), m_number(number), m_description(description), m_gone(gone)
    {
    }
    int number() const { return m_number; }
    QString description() const { return m_description; }
    /// The word processor is no longer there to ask (closed by the breeder).
    bool gone() const { return m_gone; }

private:
    int m_number;
    QString m_description;
    bool m_gone;
};

/// The word processor a pedigree is merged through: a template opened, placeholders found
/// and replaced one occurrence at a time, the merged document saved, printed or shown.
/// Every operation throws WordError on failure.
class WordProcessor
{
public:
    virtual ~WordProcessor() = default;

    /// Whether this machine can merge at all.
    virtual bool available() = 0;
    virtual void open(const QString &templatePath) = 0;
    virtual bool find(const QString &text) = 0;
    /// Replaces the next occurrence; false when none is left.
    virtual bool replace(const QString &text, const QString &value) = 0;
    /// Puts the picture at the next occurrence; false when none is left.
    virtual bool image(const QString &text, const QString &picturePath) = 0;
    /// Saves the merged document in the format of the file type chosen (its extension).
    virtual void save(const QString &path, const QString &extension) = 0;
    virtual void print() = 0;
    /// Shows the merged document in the word processor.
    virtual void activate() = 0;
    virtual void quit() = 0;
    /// The save formats as file-dialog filters, the document's own first.
    virtual QStringList fileTypes() = 0;
};

/// Every call to the word processor: the action by its name ("Set", "Exists", "Open",
/// "Find", "Replace", "Image", "Save", "Print", "Activate", "Quit", "Unset"), the text to
/// find and the one to put in its place (for "Open" and "Save", the file). Returns whether
/// the text was found (for "Find", "Replace" and "Image") or the action done; a failure is
/// told to the breeder, sets failed and returns false. An empty replacement puts a single
/// blank. An action the table does not know ("UnSet") does nothing and returns true.
bool Word_Function(WordProcessor &word, Prompts &prompts, const QString &action, const QString &find = {},
                   const QString &replace = {}, bool *failed = nullptr);

/// The field words of a placeholder, in the order they are merged.
QStringList mergeFieldWords();
/// The value of a field word of a cell ("Id" is the ring number, "Breed" the type).
QString mergeFieldValue(const PedigreeCell &cell, const QString &word);

/// Fills the open template with the pedigree: the subject read again, the pictures found,
/// the template examined for the fields and generations it holds, then the header and
/// footer lines and every field of every generation, each replacement taking the next
/// occurrence. Progress tells "Examining Template", then "Merging Document". False when a
/// call to the word processor failed (it has been told).
bool mergePedigree(Session &session, Prompts &prompts, WordProcessor &word, PedigreeTable &table,
                   qint64 subject, Progress &progress = noProgress());

/// Saves the merged document where the breeder chose, in the format of the extension, but
/// never over the template: that is refused ("You cannot overwrite the template file") and
/// the document stays open. True when it was saved.
bool saveMerged(WordProcessor &word, Prompts &prompts, const QString &templatePath, const QString &path,
                const QString &extension);

} // namespace tarvex
