// Builds the template stud database EmptyStock.mdb from schema.sql.
// Usage: make_empty_stock <schema.sql> <output.mdb>
#include <SQLiteCpp/SQLiteCpp.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_empty_stock <schema.sql> <output.mdb>\n");
        return 2;
    }
    std::ifstream in(argv[1]);
    if (!in) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 1;
    }
    std::stringstream schema;
    schema << in.rdbuf();
    const std::filesystem::path out = argv[2];
    const std::filesystem::path tmp = out.string() + ".tmp";
    std::filesystem::remove(tmp);
    try {
        {
            SQLite::Database db(tmp.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
            db.exec("PRAGMA page_size = 4096");
            db.exec("PRAGMA journal_mode = DELETE");
            SQLite::Transaction tx(db);
            db.exec(schema.str());
            tx.commit();
            db.exec("VACUUM");
        }
        std::filesystem::rename(tmp, out);
    } catch (const std::exception &e) {
        std::fprintf(stderr, "cannot build %s: %s\n", argv[2], e.what());
        std::filesystem::remove(tmp);
        return 1;
    }
    return 0;
}
