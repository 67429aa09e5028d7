#include "FmColourMatch.h"

#include "genetics/GeneticsData.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

FmColourMatch::FmColourMatch(const Session &session, const QString &colour, QWidget *parent) : QDialog(parent)
{
    setObjectName(u"FmColourMatch"_s);
    setWindowTitle(u"Select Genetic Colour"_s);
    const GeneticsData &g = *session.Genetics;

    place(make<QLabel>(this, "LblAnimalColour", u"Animal's Colour"_s), 150, 150, 2200, 300);
    auto *shown = make<QLabel>(this, "LblColour", colour);
    QFont bold = shown->font();
    bold.setBold(true);
    shown->setFont(bold);
    place(shown, 2400, 150, 4800, 300);
    auto *explain = make<QLabel>(this, "LblExplain",
                                 u"The colour you have selected does not match a known colour in the "
                                 u"genetics database. Please select the "
                                 u"colour that matches the animal's colour the closest. \n\nYou can choose "
                                 u"to save this Colour Match so that "
                                 u"next time this colour is encountered it will automatically match the "
                                 u"selected Database Colour for genetic "
                                 u"coding."_s);
    explain->setWordWrap(true);
    place(explain, 150, 550, 7050, 1500);

    const auto row = [&](const char *label, const char *name, const QString &caption,
                         const QStringList &items, int top) {
        auto *l = make<QLabel>(this, label, caption);
        place(l, 150, top + 40, 2200, 300);
        auto *c = make<QComboBox>(this, name);
        c->addItems(items);
        place(c, 2400, top, 4800, 360);
        const bool any = !items.isEmpty();
        l->setVisible(any);
        c->setVisible(any);
        return c;
    };
    CmbGColour = row("LblGColour", "CmbGColour", u"Genetic Colour"_s, g.ColourList.mid(1), 2200);
    CmbGPattern = row("LblGPattern", "CmbGPattern", u"Genetic Pattern"_s, g.PatternList.mid(1), 2650);
    CmbGCoatType = row("LblGCoatType", "CmbGCoatType", u"Genetic Coat Type"_s, g.CoatTypeList.mid(1), 3100);
    ChkColMatch = make<QCheckBox>(this, "ChkColMatch", u"Save this Colour Match for future use"_s);
    place(ChkColMatch, 150, 3600, 7000, 300);

    auto *ok = make<QPushButton>(this, "CmdOk", u"O&k"_s);
    ok->setDefault(true);
    place(ok, 4000, 4100, 1500, 420);
    auto *cancel = make<QPushButton>(this, "CmdCancel", u"&Cancel"_s);
    place(cancel, 5700, 4100, 1500, 420);
    onAction(ok, &QPushButton::clicked, this, [this] {
        const auto text = [](const QComboBox *c) {
            return c->isVisibleTo(c->parentWidget()) ? c->currentText() : QString();
        };
        m_chosen = colourRowName(text(CmbGColour), text(CmbGPattern), text(CmbGCoatType));
        m_save = ChkColMatch->isChecked();
        accept();
    });
    onAction(cancel, &QPushButton::clicked, this, [this] {
        m_chosen.clear();
        reject();
    });

    const QSize design(Design::px(7400), Design::px(4700));
    resize(design);
    FormResizeSetup(this, design);
}

} // namespace tarvex
