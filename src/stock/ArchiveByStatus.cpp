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
    progress.start(0, u"Updating"_s);
    // Each animal with a status takes the tick of the entry whose capitals equal its
    // status; a status with no entry is not archived. One statement, so all or nothing.
    QStringList marks;
    QVariantList ticked;
    for (const StatusChoice &c : choices) {
        if (c.archive) {
            marks << u"?"_s;
            ticked << c.status.toUpper();
        }
    }
    const QString yes = marks.isEmpty() ? u"0"_s : u"ucase(status) IN (%1)"_s.arg(marks.join(u", "_s));
    Transaction tx(db);
    {
        const Database::Watch watch(db, [&] { return !progress.cancelled(); });
        db.execute(
            u"UPDATE Stock SET Archive = CASE WHEN %1 THEN 'Yes' ELSE 'No' END WHERE status IS NOT NULL"_s.arg(yes),
            ticked);
    }
    tx.commit();
}

} // namespace tarvex
