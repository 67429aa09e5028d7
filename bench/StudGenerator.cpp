#include "StudGenerator.h"

#include "RegistryPedigree.h"

#include "store/Database.h"
#include "store/DaySerial.h"

#include <QCryptographicHash>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <random>

using namespace Qt::StringLiterals;

namespace tarvex::bench {

namespace {

/// Bucks are the animals some animal has as its sire, does its dam; the rest alternate.
std::vector<bool> registryBucks(const std::vector<PedigreeRecord> &registry)
{
    std::vector<bool> buck(registry.size() + 1);
    for (std::size_t i = 1; i < buck.size(); ++i)
        buck[i] = i % 2 == 1;
    for (const PedigreeRecord &r : registry) {
        if (r.sire > 0)
            buck[std::size_t(r.sire)] = true;
        if (r.dam > 0)
            buck[std::size_t(r.dam)] = false;
    }
    return buck;
}

} // namespace

bool generateStud(const QString &path, const StudShape &shape)
{
    QFile::remove(path);
    if (!QFile::copy(QStringLiteral(TARVEX_PROGRAM_FOLDER "EmptyStock.mdb"), path))
        return false;
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    auto db = Database::open(path);
    std::mt19937 random(20261122);
    const auto pick = [&](int n) { return int(std::uniform_int_distribution<int>(0, n - 1)(random)); };

    Transaction tx(*db);
    SQLite::Statement insert(
        db->sql(), "INSERT INTO Stock (Name, RingNo, Type, Sex, Colour, Breeder, status, Archive, DOB, "
                   "Sire, Dam, Weight) VALUES (?,?,?,?,?,?,?,?,?,?,?,?)");
    const double firstBirth = DaySerial::fromDate(QDate(1990, 1, 1));
    const std::vector<PedigreeRecord> registry =
        shape.registry ? registryPedigree(shape.animals, 30) : std::vector<PedigreeRecord>{};
    const std::vector<bool> registryBuck = registryBucks(registry);
    for (int i = 1; i <= shape.animals; ++i) {
        const bool male = shape.registry ? bool(registryBuck[std::size_t(i)]) : i % 2 == 1;
        // Parents come from the animals born before, most often the recent ones.
        const int window = std::min(i - 1, 2000);
        const auto parent = [&](bool wantMale) -> qint64 {
            if (window < 4)
                return 0;
            qint64 n = i - 1 - pick(window);
            if ((n % 2 == 1) != wantMale)
                n = n > 1 ? n - 1 : n + 1;
            return n;
        };
        insert.reset();
        insert.bind(1, u"Animal %1 %2"_s.arg(pick(shape.animals * 4)).arg(i).toStdString());
        insert.bind(2, u"R%1"_s.arg(i).toStdString());
        insert.bind(3, u"Breed %1"_s.arg(pick(shape.colours)).toStdString());
        insert.bind(4, male ? "Buck" : "Doe");
        insert.bind(5, u"Colour %1"_s.arg(pick(shape.colours)).toStdString());
        insert.bind(6, u"Breeder %1"_s.arg(pick(shape.colours)).toStdString());
        insert.bind(7, u"Status %1"_s.arg(pick(shape.colours)).toStdString());
        insert.bind(8, pick(100) < shape.archivedPercent ? "Yes" : "No");
        insert.bind(9, firstBirth + i * (12000.0 / shape.animals));
        const qint64 sire = shape.registry ? registry[std::size_t(i) - 1].sire : parent(true);
        const qint64 dam = shape.registry ? registry[std::size_t(i) - 1].dam : parent(false);
        if (sire > 0)
            insert.bind(10, static_cast<int64_t>(sire));
        else
            insert.bind(10);
        if (dam > 0)
            insert.bind(11, static_cast<int64_t>(dam));
        else
            insert.bind(11);
        insert.bind(12, 2.0 + pick(300) / 100.0);
        insert.exec();
    }
    tx.commit();
    return true;
}

QString cachedStud(const StudShape &shape)
{
    const QString templateFile = QStringLiteral(TARVEX_PROGRAM_FOLDER "EmptyStock.mdb");
    QFile empty(templateFile);
    if (!empty.open(QIODevice::ReadOnly))
        return {};
    // A changed schema makes a new file: the template's digest is part of the name.
    const QString schema =
        QString::fromLatin1(QCryptographicHash::hash(empty.readAll(), QCryptographicHash::Sha1).toHex().left(10));
    QString folder = qEnvironmentVariable("TARVEX_BENCH_CACHE");
    if (folder.isEmpty())
        folder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + u"/tarvex-bench"_s;
    if (!QDir().mkpath(folder))
        return {};
    const QString path = QDir(folder).filePath(u"stud-%1-%2-%3%6-g%4-%5.mdb"_s.arg(shape.animals)
                                                   .arg(shape.colours)
                                                   .arg(shape.archivedPercent)
                                                   .arg(kStudGeneratorVersion)
                                                   .arg(schema, shape.registry ? u"-registry"_s : QString()));
    if (QFile::exists(path))
        return path;
    // Made beside its place and renamed, so that a run stopped part way leaves no stud
    // that a later run would take for a whole one.
    const QString part = path + u".part"_s;
    if (!generateStud(part, shape)) {
        QFile::remove(part);
        return {};
    }
    if (!QFile::rename(part, path)) {
        QFile::remove(part);
        return {};
    }
    return path;
}

bool copyOfStud(const QString &path, const StudShape &shape)
{
    const QString kept = cachedStud(shape);
    if (kept.isEmpty() || !QFile::copy(kept, path)) {
        if (!generateStud(path, shape))
            return false;
    }
    // The kept stud is read-only; the copy is the benchmark's to write to.
    return QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
}

} // namespace tarvex::bench
