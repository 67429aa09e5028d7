#include "ImageLibrary.h"

#include "core/Options.h"
#include "reporting/SearchResultsSheet.h"
#include "reporting/SheetPrint.h"
#include "store/Database.h"
#include "store/StudDatabase.h"

#include <QDir>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

const QString kTitle = u"Image List"_s;
const QString kRowLost = u"Image Details Lost - Arghh"_s;

// The rows of an animal from its first number on, as a walk of the picture key from
// (number, 0) finds them.
const QString kEntriesOfAnimal =
    u"SELECT imageno, Path, Caption, Comments, \"Default\" FROM Images WHERE Number = ? AND imageno > 0 "
    u"ORDER BY imageno, rowid"_s;

// The page's width inside the frame, less the caption's margin.
constexpr double kCaptionWidth = 196;

} // namespace

ImageFolder GetImageFolder(const Session &session)
{
    const QString chosen = Options(session).text(Opt::DefaultImageFolder);
    if (!chosen.trimmed().isEmpty())
        return {chosen, false};
    return {session.DataFolder + session.StockType + u" Images"_s, true};
}

ImageFolder PrepareImageFolder(const Session &session)
{
    const ImageFolder folder = GetImageFolder(session);
    QDir().mkpath(folder.path);
    return folder;
}

QRect fitPicture(const QSize &picture, const QSize &slot)
{
    if (picture.isEmpty() || slot.isEmpty())
        return {};
    QSize shown = picture;
    if (picture.width() >= slot.width() || picture.height() >= slot.height()) {
        const double ratio =
            std::min(double(slot.width()) / picture.width(), double(slot.height()) / picture.height());
        shown = QSize(std::clamp(int(std::lround(picture.width() * ratio)), 1, slot.width()),
                      std::clamp(int(std::lround(picture.height() * ratio)), 1, slot.height()));
    }
    return {(slot.width() - shown.width()) / 2, (slot.height() - shown.height()) / 2, shown.width(),
            shown.height()};
}

ScrollRange scrollRange(int entries)
{
    return {1, entries <= 1 ? 1 : entries - 1};
}

int slotEntry(int position, int slot, int entries)
{
    const int index = position + slot;
    return index >= 1 && index <= entries ? index : 0;
}

ListButtons listButtons(int entries)
{
    return {true, entries > 0, entries > 0, entries > 2};
}

bool printImages(PrintSurface &page, const QString &studTitle, const QString &name,
                 const QList<ImageEntry> &entries)
{
    if (entries.isEmpty()) {
        page.killDoc();
        return false;
    }
    SetPrinterDefaults(page);
    SetSheetScale(page);
    const auto heading = [&](bool continued) { PrintSheetHeader(page, studTitle, name, continued); };
    SheetPrinter sheet(page, heading);
    bool first = true;
    for (const ImageEntry &e : entries) {
        // Each picture is a page of its own, not a continuation of the one before.
        if (!first)
            page.newPage();
        first = false;
        heading(false);
        page.CurrentY += 1;
        page.setFontSize(12);
        page.setItalic(false);
        page.setBold(true);
        page.CurrentX = 2;
        const double top = page.CurrentY;
        PrintFitted(page, e.Caption, kCaptionWidth);
        page.setBold(false);
        page.CurrentX = 0;
        page.CurrentY = top + page.textHeight(u"X"_s) + 1;
        // A file that is gone or is no picture leaves the rest of its page empty.
        sheet.PrintDefaultImage(e.Path);
    }
    page.endDoc();
    return true;
}

ImageLibrary::ImageLibrary(Session &session, Prompts &prompts, qint64 number, const QString &name)
    : m_session(session), m_prompts(prompts), m_number(number), m_name(name)
{
}

void ImageLibrary::Form_Load()
{
    m_entries.clear();
    m_session.Stud->handle().eachRow(kEntriesOfAnimal, {m_number}, [&](const Row &row) {
        ImageEntry e;
        e.imageno = row.number(u"imageno"_s);
        e.Path = row.text(u"Path"_s);
        e.Caption = row.text(u"Caption"_s);
        e.Comments = row.text(u"Comments"_s);
        // Files of older versions hold a yes as -1.
        e.Default = row.number(u"Default"_s) != 0;
        m_entries.append(e);
    });
}

bool ImageLibrary::TryImage(PictureFound found)
{
    switch (found) {
    case PictureFound::Picture:
        return true;
    case PictureFound::Missing:
        m_prompts.show(u"Image Does not Exist"_s, kTitle, Prompts::Icon::Exclamation);
        return false;
    case PictureFound::NotAPicture:
        m_prompts.show(u"Invalid Image Format"_s, kTitle, Prompts::Icon::Exclamation);
        return false;
    }
    return false;
}

qint64 ImageLibrary::rowOf(qint64 imageno) const
{
    return m_session.Stud->handle()
        .scalar(u"SELECT rowid FROM Images WHERE Number = ? AND imageno = ? ORDER BY rowid LIMIT 1"_s,
                {m_number, imageno})
        .toLongLong();
}

bool ImageLibrary::CmdOk_Click(ImageForm &form, int amending, QString *focus, int *saved)
{
    focus->clear();
    form.caption = form.caption.trimmed();
    form.path = form.path.trimmed();
    if (form.caption.isEmpty()) {
        m_prompts.show(u"A Title must be given"_s, kTitle, Prompts::Icon::Information);
        *focus = u"TxtCaption"_s;
        return false;
    }
    if (form.path.isEmpty()) {
        m_prompts.show(u"An Image Path must be given"_s, kTitle, Prompts::Icon::Information);
        *focus = u"TxtPath"_s;
        return false;
    }
    if (form.isDefault) {
        bool another = false;
        for (int i = 1; i <= count() && !another; ++i)
            another = i != amending && entry(i).Default;
        if (another &&
            !m_prompts.askYesNo(u"Another Image is currently Default\r\nMake this one Default instead?"_s,
                                kTitle, Prompts::Icon::Question))
            form.isDefault = false;
    }

    // The other default given up and this entry written go in together: a row found gone
    // takes both back.
    const bool isNew = amending <= 0;
    qint64 imageno = 0;
    bool lost = false;
    {
        Database &db = m_session.Stud->handle();
        Transaction tx(db);
        if (form.isDefault)
            db.execute(u"UPDATE Images SET \"Default\" = 0 WHERE Number = ? AND \"Default\" <> 0"_s,
                       {m_number});
        const QVariantList values{form.caption, textOrNull(form.comments), form.isDefault ? 1 : 0, form.path};
        if (isNew) {
            // Numbers go on from the last entry: one deleted in the middle is not given out again.
            imageno = m_entries.isEmpty() ? 1 : m_entries.last().imageno + 1;
            db.execute(u"INSERT INTO Images (Number, imageno, Caption, Comments, \"Default\", Path) "
                       u"VALUES (?, ?, ?, ?, ?, ?)"_s,
                       QVariantList{m_number, imageno} + values);
        } else {
            const qint64 row = amending <= count() ? rowOf(entry(amending).imageno) : 0;
            if (row == 0) {
                lost = true;
            } else {
                imageno = entry(amending).imageno;
                db.execute(
                    u"UPDATE Images SET Caption = ?, Comments = ?, \"Default\" = ?, Path = ? WHERE rowid = ?"_s,
                    values + QVariantList{row});
            }
        }
        if (!lost)
            tx.commit();
    }
    if (lost) {
        m_prompts.show(kRowLost, kTitle, Prompts::Icon::Exclamation);
        return false;
    }

    if (form.isDefault)
        for (ImageEntry &e : m_entries)
            e.Default = false;
    if (isNew) {
        ImageEntry e;
        e.imageno = imageno;
        m_entries.append(e);
    }
    const int index = isNew ? count() : amending;
    ImageEntry &e = entry(index);
    if (e.Path != form.path) {
        // Another file: read when the entry next comes into view.
        e.state = LoadState::NotTried;
        e.size = QSize();
    }
    e.Caption = form.caption;
    e.Comments = form.comments;
    e.Default = form.isDefault;
    e.Path = form.path;
    if (saved)
        *saved = index;
    return true;
}

bool ImageLibrary::CmdDelete_Click(int index)
{
    if (index < 1 || index > count())
        return false;
    if (!m_prompts.askYesNo(u"Delete this Entry?"_s, kTitle, Prompts::Icon::Question))
        return false;
    bool lost = false;
    {
        Database &db = m_session.Stud->handle();
        Transaction tx(db);
        const qint64 row = rowOf(entry(index).imageno);
        if (row == 0) {
            lost = true;
        } else {
            db.execute(u"DELETE FROM Images WHERE rowid = ?"_s, {row});
            tx.commit();
        }
    }
    if (lost) {
        m_prompts.show(kRowLost, kTitle, Prompts::Icon::Exclamation);
        return false;
    }
    m_entries.removeAt(index - 1);
    return true;
}

} // namespace tarvex
