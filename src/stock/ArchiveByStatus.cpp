#include "ArchiveByStatus.h"

#include "store/Table.h"

using namespace Qt::StringLiterals;

namespace tarvex {

QList<StatusChoice> Fill_Status_List(Database &db)
{
    QList<StatusChoice> list;
    Table util(db, u"Stock"_s);
    util.setIndex(u"StatusKey"_s);
    // The walk starts above "1": a status that sorts below it is never listed.
    QString last = u"1"_s;
    for (;;) {
        util.seek(u">"_s, {last});
        if (util.noMatch())
            break;
        last = util.field(u"status"_s).toString();
        list.append({last, util.field(u"Archive"_s).toString() == u"Yes"});
    }
    return list;
}

void Update_Archive_Status(Database &db, const QList<StatusChoice> &choices, Progress &progress)
{
    // Each animal with a status takes the tick of the entry whose capitals equal its
    // status; a status with no entry is not archived.
    QStringList marks;
    QVariantList ticked;
    for (const StatusChoice &c : choices) {
        if (c.archive) {
            marks << u"?"_s;
            ticked << c.status.toUpper();
        }
    }
    const QString yes = marks.isEmpty() ? u"0"_s : u"ucase(status) IN (%1)"_s.arg(marks.join(u", "_s));
    const QString update =
        u"UPDATE Stock SET Archive = CASE WHEN %1 THEN 'Yes' ELSE 'No' END "
        u"WHERE status IS NOT NULL AND Number > ? AND Number <= ?"_s.arg(yes);
    // A large stud is rewritten a block of animals at a time, so that the bar moves and the
    // user may stop it; all blocks are one change, so a stop leaves every animal as it was.
    constexpr qint64 kBlock = 10000;
    const qint64 last = db.scalar(u"SELECT ifnull(max(Number), 0) FROM Stock"_s).toLongLong();
    progress.start(last);
    Transaction tx(db);
    for (qint64 from = 0; from < last; from += kBlock) {
        if (progress.cancelled())
            throw StoreError(StoreError::Cancelled, u"Operation canceled by user."_s);
        QVariantList params = ticked;
        params << from << from + kBlock;
        db.execute(update, params);
        progress.step(std::min(from + kBlock, last));
    }
    tx.commit();
}

} // namespace tarvex
