#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "core/StudLoader.h"
#include "breeding/screens/FmAwards.h"
#include "breeding/screens/FmBrNote.h"
#include "breeding/screens/FmBulkDiary.h"
#include "breeding/screens/FmMatings.h"
#include "core/Options.h"
#include "core/screens/FmRegister.h"
#include "core/screens/FmSelDatabase.h"
#include "genetics/Genotypes.h"
#include "genetics/screens/FmColourMatch.h"
#include "genetics/screens/FmGenCheck.h"
#include "genetics/screens/FmGenetics.h"
#include "genetics/screens/FmListColours.h"
#include "genetics/screens/FmStockGenetics.h"
#include "images/screens/FmImages.h"
#include "pedigree/screens/FmTestMate.h"
#include "pedigree/screens/fmPedCreate.h"
#include "pedigree/screens/fmPedOptions.h"
#include "pedigree/screens/fmPedigree.h"
#include "reporting/screens/FmQuickSrch.h"
#include "stock/screens/FmArchive.h"
#include "stock/screens/FmStock.h"
#include "reporting/Duplicate.h"
#include "reporting/screens/FmDuplicate.h"
#include "reporting/screens/FmLabels.h"
#include "care/screens/FmBackup.h"
#include "care/screens/FmDatabaseUtil.h"
#include "care/screens/FmImpExp.h"
#include "support/FakeDevices.h"
#include "pedigree/screens/FmWordMerge.h"
#include "core/screens/FmOptions.h"
#include "platform/DocumentWordProcessor.h"
#include "reporting/screens/FmPrint.h"
#include "reporting/screens/FmReports.h"
#include "reporting/screens/FmStats.h"
#include "stock/screens/StockRecordPanel.h"
#include "stock/screens/fmStockenq.h"
#include "store/StudDatabase.h"
#include "ui/ClsResizer.h"
#include "ui/SymbolList.h"
#include "ui/fmAbout.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>
#include <QTabWidget>
#include <QTextDocument>
#include <QTreeView>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <set>
#include <string_view>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

// The style options of a control, as the control itself fills them in.
struct ComboOptions : QComboBox
{
    using QComboBox::initStyleOption;
};
struct GroupOptions : QGroupBox
{
    using QGroupBox::initStyleOption;
};
struct ButtonOptions : QPushButton
{
    using QPushButton::initStyleOption;
};
struct ViewOptions : QAbstractItemView
{
    using QAbstractItemView::initViewItemOption;
};

QStyleOptionComboBox optionsOf(const QComboBox *c)
{
    QStyleOptionComboBox o;
    (c->*(&ComboOptions::initStyleOption))(&o);
    return o;
}

QString withoutMnemonic(const QString &text)
{
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == u'&') {
            if (i + 1 < text.size())
                out += text.at(++i);
            continue;
        }
        out += text.at(i);
    }
    return out;
}

QString withoutSortMark(QString text)
{
    if (text.endsWith(u" v"_s) || text.endsWith(u" ^"_s))
        text.chop(2);
    return text;
}

/// Walks the visible controls of a window and writes down each text wider or taller than the
/// room its control gives it, measured with the control's own font and style, and each
/// drop-down list whose pop-up is too narrow for its widest item.
class TextFit
{
public:
    /// The lists whose closed box shows an animal's name: the name is the breeder's, the
    /// pop-up must still show it whole.
    std::set<QString> namedLists{u"RSire"_s, u"RDam"_s, u"CmbSire"_s, u"CmbDam"_s, u"NLSire"_s, u"NLDam"_s,
                                 u"MSireDam"_s};
    QStringList offenders;

    void check(const QString &where, QWidget *window)
    {
        m_where = where;
        m_window = window;
        const auto widgets = window->findChildren<QWidget *>();
        for (QWidget *w : widgets) {
            // Only what shows: the pedigree's boxes of generations not shown lie off its surface.
            if (!w->isVisible() || w->window() != window || shownPart(w).isEmpty())
                continue;
            if (auto *l = qobject_cast<QLabel *>(w))
                label(l);
            else if (auto *c = qobject_cast<QCheckBox *>(w))
                indicated(c, QStyle::PM_IndicatorWidth, QStyle::PM_CheckBoxLabelSpacing);
            else if (auto *r = qobject_cast<QRadioButton *>(w))
                indicated(r, QStyle::PM_ExclusiveIndicatorWidth, QStyle::PM_RadioButtonLabelSpacing);
            else if (auto *b = qobject_cast<QPushButton *>(w))
                button(b);
            else if (auto *g = qobject_cast<QGroupBox *>(w))
                groupTitle(g);
            else if (auto *h = qobject_cast<QHeaderView *>(w))
                header(h);
            else if (auto *combo = qobject_cast<QComboBox *>(w))
                list(combo);
        }
    }

private:
    void offend(const QWidget *w, const QString &text, const char *what, int needed, int available)
    {
        // A control reaching beyond the frame or panel that holds it is cut there.
        const QRect shown = shownPart(w);
        if (std::string_view(what) == "width")
            available = std::min(available, shown.width() - (w->width() - available));
        else
            available = std::min(available, shown.height() - (w->height() - available));
        if (needed <= available)
            return;
        offenders << u"%1: %2 \"%3\" needs %4 px of %5, has %6"_s.arg(m_where, w->objectName(), text)
                         .arg(needed)
                         .arg(QLatin1String(what))
                         .arg(available);
    }

    /// The part of a control inside every frame and panel that holds it, in the window's
    /// coordinates.
    QRect shownPart(const QWidget *w) const
    {
        QRect shown = w->rect();
        for (const QWidget *p = w; p != m_window && p->parentWidget(); p = p->parentWidget())
            shown = shown.translated(p->pos()) & p->parentWidget()->rect();
        return shown;
    }

    void label(QLabel *l)
    {
        const QString text = l->text();
        if (text.isEmpty())
            return;
        const QFontMetrics fm(l->font());
        const int m = l->margin();
        QRect room = l->contentsRect().adjusted(m, m, -m, -m);
        int indent = l->indent();
        if (indent < 0)
            indent = l->frameWidth() > 0 ? fm.horizontalAdvance(u'x') / 2 : 0;
        if (l->alignment() & (Qt::AlignLeft | Qt::AlignRight))
            room.setWidth(room.width() - indent);
        if (l->alignment() & (Qt::AlignTop | Qt::AlignBottom))
            room.setHeight(room.height() - indent);
        QSize needed;
        if (l->textFormat() == Qt::RichText || (l->textFormat() == Qt::AutoText && Qt::mightBeRichText(text))) {
            QTextDocument doc;
            doc.setDefaultFont(l->font());
            doc.setDocumentMargin(0);
            doc.setHtml(text);
            if (l->wordWrap())
                doc.setTextWidth(room.width());
            needed = QSize(qCeil(l->wordWrap() ? doc.size().width() : doc.idealWidth()), qCeil(doc.size().height()));
        } else {
            const int flags = int(l->alignment()) | (l->wordWrap() ? Qt::TextWordWrap : 0);
            needed = fm.boundingRect(QRect(0, 0, l->wordWrap() ? room.width() : 100000, 100000), flags, text).size();
        }
        offend(l, text, "width", needed.width(), room.width());
        offend(l, text, "height", needed.height(), room.height());
    }

    void button(QPushButton *b)
    {
        const QString text = withoutMnemonic(b->text());
        if (text.isEmpty())
            return;
        QStyleOptionButton o;
        (b->*(&ButtonOptions::initStyleOption))(&o);
        const QStyle *s = b->style();
        const int frame = s->pixelMetric(QStyle::PM_DefaultFrameWidth, &o, b);
        const int needed = b->fontMetrics().horizontalAdvance(text) + 2 * s->pixelMetric(QStyle::PM_ButtonMargin, &o, b) +
                           2 * frame;
        offend(b, text, "width", needed, b->width());
        offend(b, text, "height", b->fontMetrics().height() + 2 * frame, b->height());
    }

    void indicated(QAbstractButton *b, QStyle::PixelMetric indicator, QStyle::PixelMetric spacing)
    {
        const QString text = withoutMnemonic(b->text());
        if (text.isEmpty())
            return;
        QStyleOptionButton o;
        o.initFrom(b);
        const QStyle *s = b->style();
        const int needed = s->pixelMetric(indicator, &o, b) + s->pixelMetric(spacing, &o, b) +
                           b->fontMetrics().horizontalAdvance(text);
        offend(b, text, "width", needed, b->width());
        offend(b, text, "height", b->fontMetrics().height(), b->height());
    }

    void groupTitle(QGroupBox *g)
    {
        const QString text = withoutMnemonic(g->title());
        if (text.isEmpty())
            return;
        QStyleOptionGroupBox o;
        (g->*(&GroupOptions::initStyleOption))(&o);
        const QRect title = g->style()->subControlRect(QStyle::CC_GroupBox, &o, QStyle::SC_GroupBoxLabel, g);
        // The title as far in from the right edge as it is from the left.
        offend(g, text, "width", 2 * title.left() + g->fontMetrics().horizontalAdvance(text), g->width());
    }

    void header(QHeaderView *h)
    {
        const QAbstractItemModel *model = h->model();
        if (!model)
            return;
        // The heads are drawn on the header's viewport, in its font: the list's own.
        const QFont font = h->viewport()->font();
        if (h->parentWidget() && font.pointSizeF() != h->parentWidget()->font().pointSizeF())
            offenders << u"%1: %2 heads read at %3 pt, its rows at %4 pt"_s.arg(m_where, h->parentWidget()->objectName())
                             .arg(font.pointSizeF())
                             .arg(h->parentWidget()->font().pointSizeF());
        const QFontMetrics fm(font);
        const int margin = h->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, h);
        // Lists that sort by a click on a column's head show the program's mark after its text.
        const bool marked = h->sectionsClickable() && !h->isSortIndicatorShown();
        const int mark = marked ? std::max(fm.horizontalAdvance(u" v"_s), fm.horizontalAdvance(u" ^"_s)) : 0;
        const int arrow = h->isSortIndicatorShown() ? h->style()->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, h) + margin : 0;
        for (int section = 0; section < h->count(); ++section) {
            if (h->isSectionHidden(section))
                continue;
            const QString text = withoutSortMark(model->headerData(section, h->orientation()).toString());
            if (text.isEmpty())
                continue;
            offend(h->parentWidget(), text, "width", fm.horizontalAdvance(text) + mark + arrow + 2 * margin,
                   h->sectionSize(section));
        }
    }

    void list(QComboBox *c)
    {
        const QStyleOptionComboBox o = optionsOf(c);
        const QRect field = c->style()->subControlRect(QStyle::CC_ComboBox, &o, QStyle::SC_ComboBoxEditField, c);
        if (!namedLists.contains(c->objectName())) {
            // A list typed into shows its text in a line edit of two pixels' margin a side; a
            // closed list draws it one pixel in from its field.
            const QString shown = c->isEditable()           ? c->lineEdit()->text()
                                  : dynamic_cast<SymbolList *>(c) ? static_cast<SymbolList *>(c)->shownText()
                                                                 : c->currentText();
            if (!shown.isEmpty()) {
                const int inner = field.width() - (c->isEditable() ? 4 : 2);
                const QFontMetrics fm(c->isEditable() ? c->lineEdit()->font() : c->font());
                offend(c, shown, "width", fm.horizontalAdvance(shown), inner);
            }
        }
        if (c->count() == 0)
            return;
        c->showPopup();
        QAbstractItemView *view = c->view();
        const QFontMetrics fm(view->font());
        int widestRow = -1;
        for (int row = 0; row < c->count(); ++row)
            if (widestRow < 0 || fm.horizontalAdvance(c->itemText(row)) > fm.horizontalAdvance(c->itemText(widestRow)))
                widestRow = row;
        const QString widest = c->itemText(widestRow);
        const int room = view->viewport()->width();
        if (!widest.isEmpty()) {
            // The item's text as far in from the pop-up's right edge as its drawing sets it
            // in from the left.
            const int inset = textInset(view, c->model()->index(widestRow, c->modelColumn(), c->rootModelIndex()), room);
            const int needed = 2 * inset + fm.horizontalAdvance(widest);
            if (needed > room)
                offenders << u"%1: %2 pop-up item \"%3\" needs %4 px of width, has %5"_s.arg(m_where, c->objectName(), widest)
                                 .arg(needed)
                                 .arg(room);
        }
        c->hidePopup();
    }

    /// Where an item's drawing begins its text: the first inked column of the item painted
    /// by the list's own delegate, less the first letter's bearing.
    static int textInset(QAbstractItemView *view, const QModelIndex &index, int width)
    {
        QStyleOptionViewItem o;
        (view->*(&ViewOptions::initViewItemOption))(&o);
        o.rect = QRect(0, 0, width, view->sizeHintForIndex(index).height());
        o.state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
        QImage image(o.rect.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        {
            QPainter painter(&image);
            view->itemDelegateForIndex(index)->paint(&painter, o, index);
        }
        for (int x = 0; x < image.width(); ++x)
            for (int y = 0; y < image.height(); ++y)
                if (qGray(image.pixel(x, y)) < 128)
                    return x - std::max(0, QFontMetrics(view->font()).leftBearing(index.data().toString().at(0)));
        return 0;
    }

    QString m_where;
    const QWidget *m_window = nullptr;
};

class TextFitTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
        fx.copyShippedGenetics();
        main = std::make_unique<FmStock>(fx.session, fx.prompts);
        main->setShortDateFunction([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
        ASSERT_TRUE(main->start({}));
        main->show();
        QApplication::setActiveWindow(main.get());
        ASSERT_TRUE(fx.session.GeneticsOn);
        ASSERT_TRUE(Ensure_Genetics_Loaded(fx.session, fx.prompts));
        seed();
    }

    qint64 animal(const QString &name, const QString &sex, const QString &colour, const QString &breed,
                  const QVariantMap &more = {})
    {
        QVariantMap fields{{u"Name"_s, name},           {u"Sex"_s, sex},     {u"Colour"_s, colour},
                           {u"Type"_s, breed},          {u"Archive"_s, u"No"_s}, {u"Status"_s, u"Breeding"_s},
                           {u"Breeder"_s, u"A. Hale"_s}, {u"RingNo"_s, u"R 24/117"_s}};
        for (auto it = more.cbegin(); it != more.cend(); ++it)
            fields.insert(it.key(), it.value());
        const qint64 n = addAnimal(fx.session.Stud->handle(), fields);
        Update_Genes(fx.session, fx.prompts, colour, QString(), n, sex);
        return n;
    }

    void seed()
    {
        const qint64 ash = animal(u"Ash"_s, u"Buck"_s, u"Black"_s, u"Rex"_s);
        const qint64 fern = animal(u"Fern"_s, u"Doe"_s, u"Opal"_s, u"Rex"_s, {{u"Status"_s, u"Sold"_s}});
        jet = animal(u"Jet"_s, u"Buck"_s, u"Black"_s, u"Rex"_s, {{u"Sire"_s, ash}, {u"Dam"_s, fern}});
        bramble = animal(u"Bramble"_s, u"Doe"_s, u"Ruby-Eyed White"_s, u"Netherland Dwarf"_s);
        const qint64 hazel = animal(u"Hazel"_s, u"Doe"_s, u"Chocolate Agouti"_s, u"Lop"_s);
        thistle = animal(u"Thistle"_s, u"Doe"_s, u"Black"_s, u"Rex"_s,
                         {{u"Sire"_s, jet},
                          {u"Dam"_s, bramble},
                          {u"id2"_s, u"T-9"_s},
                          {u"Weight"_s, 3.5},
                          {u"Notes"_s, u"Good doe, steady temperament"_s},
                          {u"Health"_s, u"Wormed in March"_s}});
        animal(u"Clover"_s, u"Buck"_s, u"Black"_s, u"Rex"_s, {{u"Sire"_s, jet}, {u"Dam"_s, bramble}});
        animal(u"Nutmeg"_s, u"Doe"_s, u"Chocolate Agouti"_s, u"Lop"_s, {{u"Sire"_s, jet}, {u"Dam"_s, hazel}});
        Refill_All_Lists(fx.session);
        main->recordPanel()->fillLists();
    }

    /// Brings a window's form to its design size times the factor.
    static void scale(QWidget &window, qreal factor)
    {
        ClsResizer *r = ClsResizer::of(&window);
        ASSERT_NE(r, nullptr) << window.objectName().toStdString() << " keeps no proportions";
        const QSize target = (QSizeF(r->designSize()) * factor).toSize();
        window.resize(window.size() + target - r->form()->size());
        ASSERT_EQ(r->form()->size(), target) << window.objectName().toStdString();
    }

    /// Measures the window as it shows now, at its design size and half as large again.
    void measure(QWidget &window, const QString &what)
    {
        if (!window.isVisible())
            window.show();
        for (const qreal factor : {1.0, 1.5}) {
            scale(window, factor);
            // The lists lay out their heads and rows once the events now due have run.
            QCoreApplication::processEvents();
            fit.check(u"%1 at %2%"_s.arg(what).arg(qRound(factor * 100)), &window);
        }
    }

    StudFixture fx;
    ModalScript modals;
    std::unique_ptr<FmStock> main;
    TextFit fit;
    qint64 jet = 0, bramble = 0, thistle = 0;
};

TEST_F(TextFitTest, EveryTextFitsItsBoxAtDesignSizeAndHalfAsLargeAgain)
{
    FmStock &w = *main;
    measure(w, u"main panel"_s);

    // The record screen: every page, browsing, changing and adding an animal.
    auto *tabs = child<QTabWidget>(w, "tbsstock");
    const QString pages[] = {u"Details"_s, u"Notes"_s, u"Health"_s, u"Breeding"_s};
    const auto everyPage = [&](const QString &state) {
        for (int i = 0; i < 4; ++i) {
            tabs->setCurrentIndex(i);
            measure(w, u"record screen, "_s + state + u", "_s + pages[i]);
        }
    };
    click(w, "CmdBrowse");
    for (int i = 0; i < 10 && child<QLineEdit>(w, "TxtName")->text() != u"Thistle"; ++i)
        click(w, "CmdNext");
    ASSERT_EQ(child<QLineEdit>(w, "TxtName")->text(), u"Thistle");
    everyPage(u"browsing"_s);
    click(w, "CmdBrowseModify");
    everyPage(u"updating"_s);
    click(w, "cmdModifyCancel");
    click(w, "CmdBrowseCancel");
    click(w, "CmdNew");
    everyPage(u"adding"_s);
    click(w, "CmdNewCancel");
    click(w, "CMdNewLit");
    measure(w, u"new litter"_s);
    click(w, "CmdNLCan");

    // The search: each tab of criteria with the to-dates shown, then the list of results.
    click(w, "CmdSearch");
    child<QRadioButton>(w, "SDOBOpt_3")->setChecked(true);
    child<QRadioButton>(w, "OptSShowDate_3")->setChecked(true);
    auto *searchTabs = child<QTabWidget>(w, "TbSearch");
    for (int i = 0; i < 3; ++i) {
        searchTabs->setCurrentIndex(i);
        measure(w, u"search, tab "_s + QString::number(i + 1));
    }
    type(w, "SName", u"*"_s);
    click(w, "CmdSearchOk");
    measure(w, u"search results"_s);
    click(w, "CmdSearchResExit");
    scale(w, 1.0);

    {
        FmRegister d(fx.session, fx.prompts, false, &w);
        ASSERT_TRUE(d.load());
        measure(d, u"FmRegister"_s);
        click(d, "CmdAdd");
        measure(d, u"FmRegister, Add New Stock Type"_s);
    }
    {
        FmSelDatabase d(fx.session, fx.prompts, &w);
        measure(d, u"FmSelDatabase"_s);
    }
    {
        fmStockenq d(fx.session, thistle, &w);
        measure(d, u"fmStockenq"_s);
    }
    {
        FmQuickSrch d(fx.session, fx.prompts, QString(), &w);
        measure(d, u"FmQuickSrch, search"_s);
        type(d, "TxtFName", u"*"_s);
        click(d, "CmdSearch");
        measure(d, u"FmQuickSrch, results"_s);
    }
    {
        FmArchive d(fx.session, fx.prompts, &w);
        measure(d, u"FmArchive"_s);
    }
    {
        fx.session.CurrentStockNo = thistle;
        fx.session.CurrentStockName = u"Thistle"_s;
        fmPedigree d(fx.session, fx.prompts, &w);
        ASSERT_TRUE(d.start());
        measure(d, u"fmPedigree"_s);
        fmPedOptions options(fx.session, &d);
        measure(options, u"fmPedOptions"_s);
        fmPedCreate create(fx.session, fx.prompts, thistle, u"Rex"_s, true, &d);
        measure(create, u"fmPedCreate"_s);
        click(create, "CmdNew");
        measure(create, u"fmPedCreate, new ancestor"_s);
    }
    {
        FmTestMate d(fx.session, fx.prompts, &w);
        measure(d, u"FmTestMate"_s);
    }
    {
        FmGenetics d(fx.session, fx.prompts, &w);
        measure(d, u"FmGenetics, menu"_s);
        click(d, "CmdTestMate");
        pick(d, "CmbSire", u"Jet"_s);
        pick(d, "CmbDam", u"Bramble"_s);
        click(d, "CmdCalculate");
        ASSERT_TRUE(child<QWidget>(d, "lv_0")->isVisible());
        measure(d, u"FmGenetics, test mating"_s);
        click(d, "pbTestMate", "CmdTMCancel");
        click(d, "CmdColour");
        pick(d, "CmbColour", u"Black"_s);
        click(d, "CmdCalculate");
        ASSERT_TRUE(child<QWidget>(d, "lv_1")->isVisible());
        measure(d, u"FmGenetics, colour"_s);
        child<QLabel>(d, "LblPrSire")->setText(u"Jet"_s);
        child<QLabel>(d, "LblPrDam")->setText(u"Bramble"_s);
        child<QWidget>(d, "FrmProgress")->show();
        child<QWidget>(d, "FrmProgress")->raise();
        measure(d, u"FmGenetics, progress"_s);
    }
    {
        FmStockGenetics d(fx.session, fx.prompts, thistle, &w);
        measure(d, u"FmStockGenetics, basic"_s);
        click(d, "CmdMode");
        measure(d, u"FmStockGenetics, advanced"_s);
        click(d, "CmdUpdate");
        measure(d, u"FmStockGenetics, changing"_s);
    }
    {
        FmGenCheck d(fx.session, fx.prompts, &w);
        measure(d, u"FmGenCheck"_s);
    }
    {
        FmColourMatch d(fx.session, u"Harlequin Dutch"_s, &w);
        measure(d, u"FmColourMatch"_s);
    }
    {
        FmListColours d(fx.session, &w);
        measure(d, u"FmListColours"_s);
    }
    {
        fmAbout d(&w);
        measure(d, u"fmAbout"_s);
    }
    // The breeding records of Thistle: an award with long names in every column.
    fx.session.CurrentStockNo = thistle;
    fx.session.CurrentStockName = u"Thistle"_s;
    {
        fx.session.Stud->handle().execute(
            u"INSERT INTO Awards (Number, Date, Venue, Secretary, Judge, Award, Stars, CCStars, NoShown) VALUES "
            u"(?, 45000, 'Southern Counties Rabbit Club', 'Margaret Whitfield', 'Christopher Hale', "
            u"'Best in Show and Best Adult', '5', '5', 123)"_s,
            {thistle});
        FmAwards d(fx.session, fx.prompts, &w);
        measure(d, u"FmAwards, list"_s);
        click(d, "CmdAmend");
        measure(d, u"FmAwards, amend"_s);
        click(d, "CmdNACancel");
        click(d, "CmdBest");
        measure(d, u"FmAwards, best award"_s);
    }
    {
        Options(fx.session).setNumber(Opt::GestationInDays, 31);
        fx.session.Stud->handle().execute(
            u"INSERT INTO Matings (Sire, Dam, MatingDate, Birthdate) VALUES (?, ?, 45000, 45031)"_s, {jet, thistle});
        FmMatings d(fx.session, fx.prompts, &w);
        ASSERT_TRUE(d.start());
        measure(d, u"FmMatings, list"_s);
        click(d, "cmdNew");
        measure(d, u"FmMatings, new"_s);
    }
    {
        fx.session.Stud->handle().execute(
            u"INSERT INTO BreedNote (Number, Date, Notes) VALUES (?, 45000, 'Mated to Jet  - Due 15/04/2023')"_s,
            {thistle});
        FmBrNote d(fx.session, fx.prompts, &w);
        measure(d, u"FmBrNote, pages"_s);
        click(d, "CmdNew");
        measure(d, u"FmBrNote, new"_s);
    }
    {
        FmBulkDiary d(fx.session, fx.prompts, &w);
        measure(d, u"FmBulkDiary"_s);
    }
    {
        // Thistle's pictures: long texts in every line of a slot, and a file that has gone
        // (the stand-by picture); then one entry on show, and its details being changed.
        fx.session.Stud->handle().execute(
            u"INSERT INTO Images (Number, imageno, Caption, Comments, Path, \"Default\") VALUES "
            u"(?, 1, 'Best in Show at the Southern Counties Championship', "
            u"'At eight months, in full coat after the moult, photographed in the garden', "
            u"'/home/breeder/Pictures/Rabbits Images/Thistle at the spring show in April 2024.jpg', 1), "
            u"(?, 2, 'Side view', NULL, '/home/breeder/Pictures/side.jpg', 0)"_s,
            {thistle, thistle});
        FmImages d(fx.session, fx.prompts, thistle, u"Thistle"_s, &w);
        measure(d, u"FmImages, list"_s);
        click(d, "CmdSelect");
        measure(d, u"FmImages, entry on show"_s);
        click(d, "cmdUpdate");
        measure(d, u"FmImages, details"_s);
    }
    {
        // Jet's young: a warning for a name two animals share, and his litter statistics.
        Database &db = fx.session.Stud->handle();
        db.execute(u"UPDATE Stock SET Name = 'Clover' WHERE Name = 'Nutmeg'"_s);
        DuplicateWarning warning(db, findDuplicates(db, u"Clover"_s, QString(), fx.session.IdWord));
        FmDuplicate d(fx.session, warning, &w);
        measure(d, u"FmDuplicate"_s);
        FmStats stats(fx.session, fx.prompts, jet, -1, u"Jet"_s, &w);
        ASSERT_TRUE(stats.start());
        for (int i = 0; i < 5; ++i) {
            child<QRadioButton>(stats, ("OStatType_" + std::to_string(i)).c_str())->click();
            measure(stats, u"FmStats, view "_s + QString::number(i));
        }
    }
    {
        FmPrint d(fx.session, jet, &w);
        measure(d, u"FmPrint"_s);
        FmLabels labels(fx.session, fx.prompts, &w);
        measure(labels, u"FmLabels"_s);
        FmReports reports(fx.session, fx.prompts, &w);
        measure(reports, u"FmReports"_s);
        for (const QString &report : {u"Blank Pedigree Form"_s, u"Birth Date Report"_s}) {
            pick(reports, "CmbRepType", report);
            measure(reports, u"FmReports, "_s + report);
        }
    }
    {
        // The care of the studs' files, with a long backup folder and the backups listed.
        FakeDevices devices;
        devices.listed = {{u"WARREN END BACKUPS"_s, u"/media/breeder/WARREN END BACKUPS"_s},
                          {u"/mnt/shared/breeding records"_s, u"/mnt/shared/breeding records"_s}};
        Options(fx.session).set(Opt::BackupDrive, u"/media/breeder/WARREN END BACKUPS"_s);
        // The backup starts as the screen comes up and stops at the stick that is not there.
        devices.unreadable = true;
        fx.prompts.answer(Prompts::Answer::Cancel);
        FmBackup backup(fx.session, fx.prompts, devices, &w);
        measure(backup, u"FmBackup"_s);
        FmDatabaseUtil utilities(fx.session, fx.prompts, devices, &w);
        measure(utilities, u"FmDatabaseUtil"_s);
        click(utilities, "CmdRestore");
        measure(utilities, u"FmDatabaseUtil, restore"_s);
        FmImpExp move(fx.session, fx.prompts, devices, &w);
        measure(move, u"FmImpExp"_s);
        DocumentWordProcessor word;
        FmWordMerge merged(fx.session, fx.prompts, word, &w);
        measure(merged, u"FmWordMerge"_s);
        FmOptions options(fx.session, fx.prompts, devices, &w);
        auto *tabs = child<QListWidget>(options, "Tab1");
        for (int i = 0; i < tabs->count(); ++i) {
            tabs->setCurrentRow(i);
            measure(options, u"FmOptions, "_s + tabs->item(i)->text());
        }
    }
    EXPECT_TRUE(fit.offenders.isEmpty()) << fit.offenders.size() << " texts do not fit:\n"
                                         << fit.offenders.join(u'\n').toStdString();
}

} // namespace
