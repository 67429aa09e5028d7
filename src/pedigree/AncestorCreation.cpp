#include "AncestorCreation.h"

#include "core/Options.h"
#include "stock/FieldLimits.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"

using namespace Qt::StringLiterals;

namespace tarvex {

qint64 addAncestor(Session &s, const NewAncestor &a, bool sire)
{
    // A cursor of its own: the animal on show in the main window stays where it is.
    Table stock(s.Stud->handle(), u"Stock"_s);
    Transaction tx(stock.database());
    stock.addNew();
    const qint64 number = stock.field(u"Number"_s).toLongLong();
    const auto text = [](const QString &v) { return textOrNull(v.trimmed()); };
    stock.setField(u"Name"_s, text(a.name));
    stock.setField(u"RingNo"_s, text(a.ringNo));
    stock.setField(u"Sex"_s, sire ? s.MaleWord : s.FemaleWord);
    stock.setField(u"Type"_s, text(a.type.left(FieldLimits::Breed)));
    stock.setField(u"Colour"_s, text(a.colour.left(FieldLimits::Colour)));
    stock.setField(u"Breeder"_s, text(a.breeder.left(FieldLimits::Breeder)));
    stock.setField(u"Archive"_s, text(a.archive));
    stock.setField(u"status"_s, text(a.status.left(FieldLimits::Status)));
    // The ancestor's own parents are not known yet.
    stock.setField(u"Sire"_s, -1);
    stock.setField(u"Dam"_s, -1);
    try {
        stock.update();
    } catch (const StoreError &) {
        stock.cancelUpdate();
        throw;
    }
    tx.commit();
    return number;
}

bool Link_Offspring(Session &s, Prompts &prompts, qint64 child, qint64 parent, bool sire)
{
    Database &db = s.Stud->handle();
    if (!readAnimal(db, child)) {
        prompts.show(u"Offspring not Found"_s, u"Error"_s, Prompts::Icon::Stop);
        return false;
    }
    Transaction tx(db);
    db.execute(sire ? u"UPDATE Stock SET Sire = ? WHERE Number = ?"_s : u"UPDATE Stock SET Dam = ? WHERE Number = ?"_s,
               {parent, child});
    tx.commit();
    return true;
}

std::optional<AncestorTarget> ancestorTarget(const PedigreeTable &table, int index, qint64 subject,
                                             const QString &subjectType)
{
    const CellLocation at = Locate_Cell(index);
    AncestorTarget t;
    t.generation = at.generation;
    t.position = at.position(index);
    t.child = subject;
    t.breed = subjectType;
    if (at.generation > 1) {
        const PedigreeCell &c = table.cell(at.generation - 1, (t.position + 1) / 2);
        if (c.Name.isEmpty() || c.Number == -1)
            return std::nullopt;
        t.child = c.Number;
        t.breed = c.Type;
    }
    t.sire = t.position % 2 == 1;
    return t;
}

bool ancestorGivenUp(Session &s, DuplicateField left, const QString &name, const QString &id,
                     const QString &nextControl)
{
    if (nextControl == u"CmdCancel" || nextControl == u"CmdAdd")
        return false;
    const std::optional<DuplicateTexts> texts = duplicateCheckTexts(Options(s), left, name, id);
    return texts && s.shell().checkDuplicate(texts->name, texts->id) == DuplicateAnswer::GivenUp;
}

qint64 createAncestor(Session &s, Prompts &prompts, const NewAncestor &ancestor, qint64 child, bool sire)
{
    try {
        Transaction tx(s.Stud->handle());
        const qint64 number = addAncestor(s, ancestor, sire);
        if (!Link_Offspring(s, prompts, child, number, sire))
            return -1;
        tx.commit();
        return number;
    } catch (const StoreError &e) {
        prompts.show(u"The record could not be saved.\n\n"_s + e.description(), u"Error Saving Record"_s,
                     Prompts::Icon::Stop);
        return -1;
    }
}

} // namespace tarvex
