#include "WordMerge.h"

#include "core/Options.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// Generations a template can name: the subject (0) to the great-great-great-grandparents.
constexpr int kLastGeneration = 5;

QString placeholder(int generation, const QString &word)
{
    return u"Gen"_s + QString::number(generation) + u'.' + word;
}

} // namespace

bool Word_Function(WordProcessor &word, Prompts &prompts, const QString &action, const QString &find,
                   const QString &replace, bool *failed)
{
    if (failed)
        *failed = false;
    try {
        if (action == u"Set" || action == u"Exists")
            return word.available();
        if (action == u"Open") {
            word.open(find);
            return true;
        }
        if (action == u"Find")
            return word.find(find);
        if (action == u"Replace")
            return word.replace(find, replace.isEmpty() ? u" "_s : replace);
        if (action == u"Image")
            return word.image(find, replace);
        if (action == u"Save") {
            word.save(find, replace);
            return true;
        }
        if (action == u"Print") {
            word.print();
            return true;
        }
        if (action == u"Activate") {
            word.activate();
            return true;
        }
        if (action == u"Quit") {
            word.quit();
            return true;
        }
        // "Unset" drops nothing here; a name the table does not know ("UnSet") falls through.
        return true;
    } catch (const WordError &e) {
        if (failed)
            *failed = true;
        if (e.gone()) {
            if (action != u"Quit")
                prompts.show(u"Word has been closed - you cannot "_s + action, u"Word Error"_s,
                             Prompts::Icon::Information);
        } else {
            prompts.show(u"An Error occurred contacting Word during: "_s + action + u"\nError : "_s +
                             QString::number(e.number()) + u'\n' + e.description(),
                         u"Word Application Error"_s, Prompts::Icon::Stop);
        }
        return false;
    }
}

QStringList mergeFieldWords()
{
    return {u"Name"_s,     u"Id"_s,  u"Sex"_s,     u"Colour"_s, u"Breeder"_s, u"Points"_s, u"BestAward"_s, u"DOB"_s,
            u"DOD"_s,      u"GenoType"_s, u"Breed"_s, u"Weight"_s, u"Id2"_s, u"Id3"_s, u"Image"_s};
}

QString mergeFieldValue(const PedigreeCell &cell, const QString &word)
{
    const std::pair<QString, const QString PedigreeCell::*> fields[] = {
        {u"Name"_s, &PedigreeCell::Name},         {u"Id"_s, &PedigreeCell::RingNo},
        {u"Sex"_s, &PedigreeCell::Sex},           {u"Colour"_s, &PedigreeCell::Colour},
        {u"Breeder"_s, &PedigreeCell::Breeder},   {u"Points"_s, &PedigreeCell::Points},
        {u"BestAward"_s, &PedigreeCell::BestAward}, {u"DOB"_s, &PedigreeCell::DOB},
        {u"DOD"_s, &PedigreeCell::DOD},           {u"GenoType"_s, &PedigreeCell::GenoType},
        {u"Breed"_s, &PedigreeCell::Type},        {u"Weight"_s, &PedigreeCell::Weight},
        {u"Id2"_s, &PedigreeCell::Id2},           {u"Id3"_s, &PedigreeCell::Id3},
        {u"Image"_s, &PedigreeCell::Image}};
    for (const auto &[name, field] : fields)
        if (name == word)
            return cell.*field;
    return {};
}

bool mergePedigree(Session &session, Prompts &prompts, WordProcessor &word, PedigreeTable &table, qint64 subject,
                   Progress &progress)
{
    // The subject again: printing may have blanked its place. A test mating has none.
    Get_Animal_Details(session, subject, table.cell(0, 1));
    QStringList fields = mergeFieldWords();
    LoadImages(session, table);

    // Which fields and generations the template holds: the others are never tried.
    progress.start(fields.size(), u"Examining Template"_s);
    int examined = 0;
    for (QString &field : fields) {
        if (!Word_Function(word, prompts, u"Find"_s, u'.' + field))
            field.clear();
        progress.step(++examined);
    }
    int highest = -1;
    while (highest < kLastGeneration &&
           Word_Function(word, prompts, u"Find"_s, u"Gen"_s + QString::number(highest + 1) + u'.'))
        ++highest;
    const qsizetype present = fields.size() - fields.count(QString());
    progress.start((qint64(1) << (highest + 1)) * present, u"Merging Document"_s);

    bool failed = false;
    const auto call = [&](const QString &action, const QString &find, const QString &value) {
        bool thisFailed = false;
        const bool found = Word_Function(word, prompts, action, find, value, &thisFailed);
        failed = failed || thisFailed;
        return found;
    };
    const Options options(session);
    call(u"Replace"_s, u"Header.StudName"_s, session.StudName);
    for (int i = 0; i < 4; ++i)
        call(u"Replace"_s, u"Header.Line"_s + QString::number(i + 1), options.text(Opt::Header, QString::number(i)));
    call(u"Replace"_s, u"Footer.Line"_s, options.text(Opt::Footer));
    if (failed)
        return false;

    // Each replacement takes the next occurrence: the template's layout decides where each
    // ancestor goes, and a field stops at its first position the template does not have.
    qint64 done = 0;
    for (int k = 0; k <= kLastGeneration; ++k) {
        for (const QString &field : std::as_const(fields)) {
            if (field.isEmpty())
                continue;
            const bool picture = field == u"Image";
            for (int p = 1; p <= (1 << k); ++p) {
                progress.step(++done);
                const QString value = mergeFieldValue(table.cell(k, p), field);
                if (!call(picture ? u"Image"_s : u"Replace"_s, placeholder(k, field), value))
                    break;
            }
            if (failed)
                return false;
        }
    }
    return true;
}

bool saveMerged(WordProcessor &word, Prompts &prompts, const QString &templatePath, const QString &path,
                const QString &extension)
{
    const auto same = [](const QFileInfo &a, const QFileInfo &b) {
        const QString ca = a.canonicalFilePath();
        const QString cb = b.canonicalFilePath();
        return !ca.isEmpty() && !cb.isEmpty() ? ca == cb : a.absoluteFilePath() == b.absoluteFilePath();
    };
    if (same(QFileInfo(path), QFileInfo(templatePath))) {
        prompts.show(u"You cannot overwrite the template file"_s, u"File not saved"_s, Prompts::Icon::Stop);
        return false;
    }
    return Word_Function(word, prompts, u"Save"_s, path, extension);
}

} // namespace tarvex
