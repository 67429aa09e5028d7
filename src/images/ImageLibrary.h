#pragma once

#include "core/PrintSurface.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QList>
#include <QRect>
#include <QSize>
#include <QString>

namespace tarvex {

/// Whether an entry's picture has been read during this visit to the list: each file is
/// read once, when its entry first comes into a slot, and a file that failed is not tried
/// again.
enum class LoadState
{
    NotTried = 0,
    Loaded = 1,
    Failed = 2
};

/// One picture of an animal as the list holds it: its row's fields, and what became of
/// reading its file.
struct ImageEntry
{
    qint64 imageno = 0;
    QString Caption;
    QString Comments;
    bool Default = false;
    QString Path;
    LoadState state = LoadState::NotTried;
    /// The picture's own size in pixels, upright; known once it has been read.
    QSize size;
};

/// What the entry panel holds, as typed. Saving writes the texts as they are kept back
/// into it (trimmed), and unticks the default when the breeder keeps the other one.
struct ImageForm
{
    QString caption;
    QString comments;
    QString path;
    bool isDefault = false;
};

/// What the picture reader found at a path.
enum class PictureFound
{
    Picture,
    Missing,
    NotAPicture
};

/// Where the pictures of the stud are looked for first, and whether that is the program's
/// own choice (the setting is empty).
struct ImageFolder
{
    QString path;
    bool defaultUsed = false;
};

/// The folder the picture chooser starts in: the stud's "Default Image Folder" setting, or
/// when that is empty "<stock type> Images" in the data folder.
ImageFolder GetImageFolder(const Session &session);
/// The same folder, made when it is not there yet (a folder that cannot be made is left
/// to the chooser, which then starts where it can).
ImageFolder PrepareImageFolder(const Session &session);

/// Where a picture stands in a slot: at its own size when it is smaller than the slot both
/// ways, otherwise scaled by the smaller of the two ratios so that it keeps its
/// proportions; centred either way. Never larger than the slot, never enlarged.
QRect fitPicture(const QSize &picture, const QSize &slot);

/// The scroll bar over the list: from 1 to 1 for one entry (or none), otherwise to one less
/// than the entries, so that the last position shows the last two.
struct ScrollRange
{
    int minimum = 1;
    int maximum = 1;
};
ScrollRange scrollRange(int entries);

/// The list's entry in a slot (0 or 1) at a scroll position: its index from 1, or 0 when
/// the slot stays empty.
int slotEntry(int position, int slot, int entries);

/// The buttons of the list view: with no entry only New works.
struct ListButtons
{
    bool newOn = true;
    bool selectOn = false;
    bool printAllOn = false;
    bool scrollOn = false;
};
ListButtons listButtons(int entries);

/// The pictures printed one to a page, each under the sheet's heading (the stud's title and
/// the animal's name) with its caption, then the picture in proportion across the page. A
/// picture that cannot be read leaves its page blank below the caption and the next page
/// still prints. False, the document abandoned, when there is nothing to print.
bool printImages(PrintSurface &page, const QString &studTitle, const QString &name,
                 const QList<ImageEntry> &entries);

/// The picture list of one animal: its entries in the order of their numbers, adding,
/// changing and deleting them with the rule of one default picture, and the checks of a
/// chosen file. The files themselves are never touched: the stud holds only their paths.
class ImageLibrary
{
public:
    ImageLibrary(Session &session, Prompts &prompts, qint64 number, const QString &name);

    /// Reads the animal's entries afresh, in the order of their numbers.
    void Form_Load();

    int count() const { return int(m_entries.size()); }
    /// The entry at index (from 1).
    const ImageEntry &entry(int index) const { return m_entries.at(index - 1); }
    ImageEntry &entry(int index) { return m_entries[index - 1]; }
    const QList<ImageEntry> &entries() const { return m_entries; }
    qint64 number() const { return m_number; }
    QString name() const { return m_name; }

    /// The check of a chosen file: "Image Does not Exist" or "Invalid Image Format" when it
    /// is not a picture that can be shown. True for a picture.
    bool TryImage(PictureFound found);

    /// Saves the panel as a new entry (amending 0) or over the entry at that index. A caption
    /// and a path are required; ticking the default while another entry is the default asks
    /// which to keep. An entry whose row has gone meanwhile is not written again ("Image
    /// Details Lost - Arghh"). False when nothing was saved; focus then names the control
    /// that takes the focus (empty when none). On success the index of the entry saved.
    bool CmdOk_Click(ImageForm &form, int amending, QString *focus, int *saved = nullptr);

    /// Deletes the entry at index after asking; its picture file stays on disk. The numbers
    /// of the others stay as they are. False when nothing was deleted.
    bool CmdDelete_Click(int index);

private:
    /// The first row of the animal with that number (its rowid), or 0 when there is none.
    qint64 rowOf(qint64 imageno) const;

    Session &m_session;
    Prompts &m_prompts;
    qint64 m_number;
    QString m_name;
    QList<ImageEntry> m_entries;
};

} // namespace tarvex
