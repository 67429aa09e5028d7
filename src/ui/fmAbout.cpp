#include "fmAbout.h"

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
    setFixedSize(Design::px(6000), Design::px(3300));

    auto *title = Design::make<QLabel>(this, "LblTitle", u"Tarvex Livestock Management System"_s);
    QFont f = title->font();
    f.setPointSize(14);
    f.setBold(true);
    title->setFont(f);
    Design::place(title, 300, 240, 5400, 450);

    auto *text = Design::make<QLabel>(
        this, "LblDescription",
        u"Pedigree and Livestock Management System (including Colour Genetics)\n\n"_s + fmSplash::versionLine() +
            u"\n"_s + fmSplash::platformLine() +
            u"\n\nRecords, pedigrees, matings, litters, show awards and colour genetics for breeders."_s);
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Design::place(text, 300, 780, 5400, 1800);

    auto *ok = Design::make<QPushButton>(this, "CmdOK", u"&OK"_s);
    ok->setDefault(true);
    Design::place(ok, 4500, 2700, 1200, 375);
    onAction(ok, &QPushButton::clicked, this, &QDialog::accept);
}

} // namespace tarvex
