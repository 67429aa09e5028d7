#include "CoiCommand.h"

#include "StudInbreeding.h"

#include "store/StoreError.h"
#include "store/StudDatabase.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tarvex {

int Coi_Command(const QString &studFile, int generations, QTextStream &out, QTextStream &err)
{
    try {
        // Opened as the window opens a stud, so that a file it would refuse is refused here
        // in the same words.
        StudDatabase stud(studFile);
        stud.openImages();
        stud.openRest();
        try {
            out << inbreedingCsv(Stud_Inbreeding(stud.handle(), generations, noProgress()));
        } catch (const PedigreeLoop &loop) {
            err << pedigreeLoopText(stud.handle(), loop.number()) << '\n';
            return 1;
        }
    } catch (const StoreError &e) {
        err << "Cannot Open Database : " << QFileInfo(studFile).fileName() << "\nError:" << e.number() << "  "
            << e.description() << '\n';
        return 1;
    }
    out.flush();
    return 0;
}

} // namespace tarvex
