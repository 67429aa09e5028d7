// A program that saves animals one after another, as the breeder's saves reach the stud,
// and says after each which one is safely saved. The crash test kills it part way.
#include "store/Database.h"

#include <QCoreApplication>

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace tarvex;

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() < 2)
        return 2;
    auto db = Database::open(args.at(1));
    if (args.contains(u"--rollback-journal"_s))
        db->sql().exec("PRAGMA journal_mode = DELETE");
    for (int i = 1;; ++i) {
        Transaction tx(*db);
        db->executeRepeated(u"INSERT INTO Stock (Name, Sex, Archive, Notes) VALUES (?, 'Doe', 'No', ?)"_s,
                            {u"Saved %1"_s.arg(i), QString(2000, u'n')});
        const qint64 number = db->sql().getLastInsertRowid();
        for (int gene = 1; gene <= 10; ++gene)
            db->executeRepeated(u"INSERT INTO Genes (StockNo, Id, allele1, allele2) VALUES (?, ?, 1, 2)"_s,
                                {number, gene});
        tx.commit();
        std::printf("%d\n", i);
        std::fflush(stdout);
    }
}
