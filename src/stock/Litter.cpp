#include "Litter.h"

#include "core/ActionFailure.h"
#include "core/NumericValue.h"
#include "genetics/Genotypes.h"
#include "store/StudDatabase.h"

using namespace Qt::StringLiterals;

namespace tarvex {

int checkLitter(Session &s, Prompts &prompts, const LitterForm &form, QString *focus)
{
    const int young = int(numericValue(form.young));
    if (young <= 0) {
        prompts.show(u"Number in Litter Must be Entered"_s, QString(), Prompts::Icon::Exclamation);
        *focus = u"NLNo"_s;
        return 0;
    }
    const QString dob = form.dob.trimmed();
    if (!dob.isEmpty() && dob != s.Dates.BlankDate && !Is_Valid_Date(dob, s.Dates, prompts)) {
        *focus = u"NLDOB"_s;
        return 0;
    }
    return young;
}

namespace {
// The litter's shared values as the checks of an animal take them; the name is the one
// given (the panel's hidden name holds a text, so the name's step passes).
StockForm sharedValues(const LitterForm &litter, const QString &name)
{
    StockForm f;
    f.name = name;
    f.breed = litter.breed;
    f.colour = litter.colour;
    f.breeder = litter.breeder;
    f.status = litter.status;
    f.archive = litter.archive;
    return f;
}

// What the screen's control for a refused value is on the litter panel.
QString litterControl(const QString &recordControl)
{
    static const QHash<QString, QString> controls{{u"Rtype"_s, u"NlType"_s},
                                                  {u"RColour"_s, u"NlColour"_s},
                                                  {u"RBreeder"_s, u"NLBreeder"_s},
                                                  {u"RStatus"_s, u"NlStatus"_s},
                                                  {u"RArchive"_s, u"NlArchive"_s},
                                                  {u"RDOB"_s, u"NLDOB"_s}};
    return controls.value(recordControl, recordControl);
}
} // namespace

std::optional<LitterCreated> Create_Litter_Automatically(Session &s, Prompts &prompts, LitterForm &litter, int young,
                                                         QString *focus)
{
    StockForm shared = sharedValues(litter, u"NlDummyName"_s);
    if (!Validate_Stock(s, prompts, shared, focus)) {
        *focus = litterControl(*focus);
        return std::nullopt;
    }
    litter.breed = *shared.breed;
    litter.colour = *shared.colour;
    litter.breeder = *shared.breeder;
    litter.status = *shared.status;
    litter.archive = *shared.archive;

    LitterCreated made;
    Database &db = s.Stud->handle();
    try {
        // The whole litter is one change: a young the stud refuses takes its brothers and
        // sisters with it.
        Transaction tx(db);
        Table stock(db, u"Stock"_s);
        for (int i = 1; i <= young; ++i) {
            stock.addNew();
            const qint64 number = stock.field(u"Number"_s).toLongLong();
            if (i == 1)
                made.first = number;
            made.last = number;
            StockForm f = litterOffspringForm(s, litter);
            f.name = s.AutoPrefix + QString::number(number);
            if (!Validate_Stock(s, prompts, stock, f, false, number, focus)) {
                *focus = litterControl(*focus);
                return std::nullopt;
            }
            stock.update();
            if (s.GeneticsOn && !litter.colour.isEmpty())
                Update_Genes(s, prompts, litter.colour, litter.breed, number, QString());
        }
        tx.commit();
    } catch (const std::exception &e) {
        prompts.show(u"The litter could not be created; no animal of it was saved.\n\n"_s + ActionFailure::reason(e),
                     u"New Litter"_s, Prompts::Icon::Stop);
        *focus = u"NLNo"_s;
        return std::nullopt;
    }
    // The letter "A" is the message's own, whatever the stud's prefix.
    prompts.show(u"Names A"_s + QString::number(made.first) + u" To A"_s + QString::number(made.last) +
                     u" Automatically Created"_s,
                 u"New Litter"_s, Prompts::Icon::Information);
    return made;
}

StockForm litterOffspringForm(const Session &s, const LitterForm &litter)
{
    StockForm f;
    f.breed = litter.breed;
    f.colour = litter.colour;
    f.breeder = litter.breeder;
    f.status = litter.status;
    f.archive = litter.archive;
    const QString dob = litter.dob.trimmed();
    f.dob = dob.isEmpty() ? s.Dates.BlankDate : dob;
    f.sire = litter.sire;
    f.dam = litter.dam;
    return f;
}

} // namespace tarvex
