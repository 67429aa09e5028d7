#include "fmAbout.h"

#include "ClsResizer.h"
#include "Design.h"
#include "fmSplash.h"
#include "ui/Action.h"

#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

fmAbout::fmAbout(QWidget *parent) : QDialog(parent)
{
    setObjectName(u"fmAbout"_s);
    setWindowTitle(u"About Tarvex Livestock Management System"_s);

    auto *title = Design::make<QLabel>(this, "LblTitle", u"Tarvex Livestock Management System"_s);
    QFont f = title->font();
    f.setPointSize(14);
    f.setBold(true);
    title->setFont(f);
    Design::place(title, 300, 240, 6400, 450);

    auto *text = Design::make<QLabel>(
        this, "LblDescription",
        u"Pedigree and Livestock Management System (including Colour Genetics)\n\n"_s + fmSplash::versionLine() +
            u"\n"_s + fmSplash::platformLine() +
            u"\n\nRecords, pedigrees, matings, litters, show awards and colour genetics for breeders."_s);
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Design::place(text, 300, 780, 6400, 1800);

    auto *ok = Design::make<QPushButton>(this, "CmdOK", u"&OK"_s);
    ok->setDefault(true);
    Design::place(ok, 5500, 2700, 1200, 375);
    onAction(ok, &QPushButton::clicked, this, &QDialog::accept);

    // In proportion like every other screen, its text at the size of theirs.
    const QSize design(Design::px(7000), Design::px(3300));
    resize(design);
    FormResizeSetup(this, design);
}

} // namespace tarvex
