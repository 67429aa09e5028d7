#include "fmPedigree.h"

#include "fmPedCreate.h"
#include "fmPedOptions.h"
#include "FmWordMerge.h"

#include "core/Options.h"
#include "pedigree/AncestorCreation.h"
#include "pedigree/PedigreeSheet.h"
#include "pedigree/WordMerge.h"
#include "platform/DocumentWordProcessor.h"
#include "platform/QPainterSurface.h"
#include "stock/screens/fmStockenq.h"
#include "ui/Action.h"
#include "ui/Hourglass.h"
#include "ui/WorkProgress.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/Modal.h"
#include "ui/PrintJob.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QLabel>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

/// One box of the pedigree: a left click opens it, the right button shows its summary
/// while held.
class PedigreeBoxLabel : public QLabel
{
public:
    PedigreeBoxLabel(int index, QWidget *parent) : QLabel(parent), m_index(index)
    {
        setObjectName(u"RPed_%1"_s.arg(index));
        setFrameShape(QFrame::Box);
        setWordWrap(true);
        setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        setAutoFillBackground(true);
        // The smallest boxes hold one line of text: the text keeps off the left edge only.
        setIndent(2);
    }
    std::function<void(int)> leftClicked, rightPressed;
    std::function<void()> released;
    /// A common ancestor's frame, drawn inside the box; an invalid colour for none.
    void setMark(const QColor &colour)
    {
        if (colour != m_mark) {
            m_mark = colour;
            setProperty("mark", colour.isValid() ? colour.name() : QString());
            update();
        }
    }
    QColor mark() const { return m_mark; }

protected:
    void paintEvent(QPaintEvent *e) override
    {
        QLabel::paintEvent(e);
        if (!m_mark.isValid())
            return;
        QPainter p(this);
        QPen pen(m_mark);
        pen.setWidth(3);
        pen.setJoinStyle(Qt::MiterJoin);
        p.setPen(pen);
        p.drawRect(rect().adjusted(1, 1, -2, -2));
    }
    void mousePressEvent(QMouseEvent *e) override
    {
        if (e->button() == Qt::RightButton && rightPressed)
            runAction(QString(), [this] { rightPressed(m_index); });
    }
    void mouseReleaseEvent(QMouseEvent *e) override
    {
        if (released)
            released();
        if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint()) && leftClicked)
            runAction(QString(), [this] { leftClicked(m_index); });
    }

private:
    int m_index;
    QColor m_mark;
};

namespace {
constexpr int kWidth = 13800; // the pedigree's 9600 and the inbreeding beside it
constexpr int kHeight = 7200;
constexpr int kBaseFontSize = 10;

// The program's box fonts are the old screen fonts; the desktop's own sans serif stands in.
QFont screenFont(const QFont &base, int size)
{
    QFont f = base;
    f.setPointSize(std::max(size, 5));
    return f;
}

QColor backColour(PedigreeBox::Back back, const QPalette &palette)
{
    switch (back) {
    case PedigreeBox::Yellow:
        return QColor(255, 255, 0);
    case PedigreeBox::Red:
        return QColor(255, 0, 0);
    default:
        return palette.color(QPalette::Button);
    }
}
} // namespace

fmPedigree::fmPedigree(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts)
{
    setObjectName(u"fmPedigree"_s);
    pb = make<QWidget>(this, "pb");
    // Thirty-two rows of boxes: the fifth generation's boxes are one line of text high.
    place(pb, 120, 120, 9360, 6500);
    RPed[0] = new PedigreeBoxLabel(0, this);
    QFont base = RPed[0]->font();
    base.setPointSize(kBaseFontSize);
    RPed[0]->setFont(base);
    RPed[0]->hide();

    lbrfull = make<QLabel>(pb, "lbrfull");
    lbrfull->setFrameShape(QFrame::Box);
    lbrfull->setAutoFillBackground(true);
    lbrfull->setStyleSheet(u"background: #ffffe1;"_s);
    lbrfull->setWordWrap(true);
    lbrfull->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lbrfull->hide();

    CmbGen = make<QComboBox>(this, "CmbGen");
    CmbGen->addItems({u"3 Generations"_s, u"4 Generations"_s, u"5 Generations"_s});
    CmbGen->setToolTip(u"Generations to Display/Print - Set  the default on the options screen"_s);
    place(CmbGen, 120, 6750, 1900, 360);
    CmbPedStyle = make<QComboBox>(this, "CmbPedStyle");
    CmbPedStyle->setToolTip(u"Pedigree Style to display/print - Set the default from the options screen"_s);
    place(CmbPedStyle, 2120, 6750, 2700, 360);

    const auto button = [&](const char *name, const QString &caption, const QString &tip, int left, int width) {
        auto *b = make<QPushButton>(this, name, caption);
        b->setToolTip(tip);
        place(b, left, 6730, width, 420);
        return b;
    };
    CmdCreate = button("CmdCreate", u"&Create"_s, u"Fasttrack Creation of livestock pedigree"_s, 4950, 900);
    CmdMerge = button("CmdMerge", u"&Merge"_s, u"Merge Pedigree with Word Document"_s, 5900, 900);
    CmdOptions = button("CmdOptions", u"&Options"_s, u"Print Options"_s, 6850, 900);
    CmdPrint = button("CmdPrint", u"&Print"_s, u"Print Pedigree Sheet"_s, 7800, 800);
    CmdSchResCancel = button("CmdSchResCancel", u"&Back"_s, u"Cancel Pedigree Screen"_s, 8650, 830);
    // The merge is offered where a way to fill documents was found at the start.
    CmdMerge->setVisible(m_session.WordAvailable);

    FrmInbreeding = make<QGroupBox>(this, "FrmInbreeding", u"Inbreeding"_s);
    place(FrmInbreeding, 9600, 60, 4080, 6560);
    LblCoi = make<QLabel>(FrmInbreeding, "LblCoi");
    LblCoi->setWordWrap(true);
    LblCoi->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    place(LblCoi, 120, 300, 3840, 560);
    LblRelationship = make<QLabel>(FrmInbreeding, "LblRelationship");
    place(LblRelationship, 120, 880, 3840, 300);
    LvCommon = make<QTreeWidget>(FrmInbreeding, "LvCommon");
    LvCommon->setRootIsDecorated(false);
    LvCommon->setHeaderLabels({u"Common Ancestor"_s, m_session.FatherWord, m_session.MotherWord, u"Share"_s});
    LvCommon->headerItem()->setToolTip(1, u"Times on the %1's side"_s.arg(m_session.FatherWord));
    LvCommon->headerItem()->setToolTip(2, u"Times on the %1's side"_s.arg(m_session.MotherWord));
    LvCommon->headerItem()->setToolTip(3, u"Its share of the COI"_s);
    for (int c = 1; c <= 3; ++c)
        LvCommon->headerItem()->setTextAlignment(c, Qt::AlignRight | Qt::AlignVCenter);
    LvCommon->header()->setStretchLastSection(false);
    LvCommon->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    for (int c = 1; c <= 3; ++c)
        LvCommon->header()->setSectionResizeMode(c, QHeaderView::ResizeToContents);
    place(LvCommon, 120, 1240, 3840, 5200);
    onAction(LvCommon, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *item) {
        fmStockenq::showRelative(m_session, item->data(0, Qt::UserRole).toLongLong(), this);
    });

    FrmProgress = make<QGroupBox>(this, "FrmProgress");
    place(FrmProgress, 2400, 2600, 4800, 1200);
    Lblprogress = make<QLabel>(FrmProgress, "Lblprogress");
    place(Lblprogress, 150, 150, 4500, 300);
    Prb = make<QProgressBar>(FrmProgress, "Prb");
    Prb->setTextVisible(false);
    place(Prb, 150, 500, 4500, 270);
    place(make<QLabel>(FrmProgress, "LblScale",
                       u"    0%                                    50%                                      100%"_s),
          150, 820, 4500, 270);

    onAction(CmbGen, &QComboBox::activated, this, [this](int index) {
        const int generations = index + 3;
        if (generations != m_session.Generations) {
            m_session.Generations = generations;
            if (m_loaded) {
                showCommonAncestors();
                placeBoxes();
            }
        }
    });
    onAction(CmbPedStyle, &QComboBox::activated, this, [this](int index) {
        m_style = CmbPedStyle->itemData(index).toInt();
        if (m_loaded)
            GetStockDetails();
    });
    onAction(CmdCreate, &QPushButton::clicked, this, &fmPedigree::CmdCreate_Click);
    onAction(CmdPrint, &QPushButton::clicked, this, &fmPedigree::CmdPrint_Click);
    onAction(CmdMerge, &QPushButton::clicked, this, &fmPedigree::CmdMerge_Click);
    onAction(CmdOptions, &QPushButton::clicked, this, [this] {
        fmPedOptions options(m_session, this);
        Modal::exec(options);
        applyTitles();
    });
    onAction(CmdSchResCancel, &QPushButton::clicked, this, &QDialog::reject);

    // Form_Load: the run's print options start afresh with every window.
    m_session.PrintType = 0;
    m_session.PrintName = true;
    m_session.PrintInbreeding = false;
    m_session.Generations = Default_Generations(m_session);
    for (const PedigreeStyle &s : pedigreeStyles(m_session.ColourWord))
        CmbPedStyle->addItem(s.text, s.code);
    m_style = defaultPedigreeStyle(m_session);
    CmbPedStyle->setCurrentIndex(CmbPedStyle->findData(m_style));
    if (m_session.CurrentStockNo == 0) {
        // Nothing can be created in a mating that does not exist.
        CmdCreate->hide();
        if (m_session.TestMatingFromGenetics) {
            CmbPedStyle->setCurrentIndex(2);
            m_style = CmbPedStyle->itemData(2).toInt();
        }
    }
    applyTitles();

    const QSize design(Design::px(kWidth), Design::px(kHeight));
    resize(design);
    fResize = FormResizeSetup(this, design);
}

fmPedigree::~fmPedigree() = default;

void fmPedigree::applyTitles()
{
    setWindowTitle(Set_Report_Titles(m_session.PrintType, m_session.PedigreeWord, m_session.CurrentStockName,
                                     m_session.CurrentStockNo == 0)
                       .caption);
}

bool fmPedigree::start()
{
    m_captions = {m_session.FatherWord + u": "_s, m_session.MotherWord + u": "_s};
    CmbGen->setCurrentIndex(m_session.Generations - 3);
    FrmProgress->show();
    bool found = false;
    {
        WorkProgress progress(this, Prb, {Lblprogress});
        found = Load_Pedigree_Table(m_session, m_table, m_session.CurrentStockNo, m_session.TestMatingSire,
                                    m_session.TestMatingDam, &m_subjectType, progress);
    }
    if (!found) {
        m_prompts.show(u"Requested Stock Not Found"_s, QString(), Prompts::Icon::Stop);
        return false;
    }
    readInbreeding();
    GetStockDetails();
    m_loaded = true;
    // Centred over the main window, and wholly on the screen.
    if (QWidget *main = parentWidget()) {
        QPoint at(main->x() + (main->width() - width()) / 2, main->y() + (main->height() - height()) / 2);
        if (const QScreen *screen = main->screen()) {
            const QRect area = screen->availableGeometry();
            at.setX(std::clamp(at.x(), area.left(), std::max(area.left(), area.right() - width())));
            at.setY(std::clamp(at.y(), area.top(), std::max(area.top(), area.bottom() - height())));
        }
        move(at);
    }
    return true;
}

void fmPedigree::GetStockDetails()
{
    FrmProgress->hide();
    m_boxes = tarvex::GetStockDetails(m_table, m_style, RPed[0]->font().pointSize(), m_captions);
    if (m_createMode)
        markCreatable(m_table, m_boxes);
    for (const PedigreeBox &b : m_boxes) {
        if (!RPed[b.index]) {
            auto *label = new PedigreeBoxLabel(b.index, pb);
            label->leftClicked = [this](int i) { RPed_Click(i); };
            label->rightPressed = [this](int i) { showSummary(i); };
            label->released = [this] { lbrfull->hide(); };
            RPed[b.index] = label;
        }
        PedigreeBoxLabel *label = RPed[b.index];
        QString text = b.caption;
        label->setText(text.replace(u'\r', u'\n'));
        label->setToolTip(b.hint);
        label->setProperty("tag", b.tag);
        label->setFont(screenFont(label->font(), b.fontSize));
        QPalette p = label->palette();
        p.setColor(QPalette::Window, backColour(b.back, palette()));
        label->setPalette(p);
        label->show();
    }
    lbrfull->raise();
    showCommonAncestors();
    placeBoxes();
}

void fmPedigree::readInbreeding()
{
    const int generations = inbreedingGenerations(Options(m_session));
    PedigreeCache &cache = pedigreeCache(m_session);
    m_inbreeding.reset();
    LblRelationship->clear();
    try {
        if (m_session.CurrentStockNo != 0)
            m_inbreeding = cache.animal(*m_session.Stud, m_session.CurrentStockNo, generations);
        else
            m_inbreeding = cache.mating(*m_session.Stud, m_session.TestMatingSire, m_session.TestMatingDam,
                                        generations);
    } catch (const PedigreeLoop &loop) {
        // The pedigree itself is still shown: the loop is what the breeder has to mend.
        LblCoi->setText(pedigreeLoopText(m_session.Stud->handle(), loop.number()));
        return;
    }
    if (!m_inbreeding)
        return;
    LblCoi->setText(coiText(m_inbreeding->coi, m_inbreeding->completeness));
    if (m_inbreeding->sire > 0 && m_inbreeding->dam > 0)
        LblRelationship->setText(
            relationshipText(m_inbreeding->relationship, m_session.FatherWord, m_session.MotherWord));
}

void fmPedigree::showCommonAncestors()
{
    // The animals in sight: the generations shown, which are those printed too.
    QSet<qint64> shown;
    for (const PedigreeBox &b : m_boxes)
        if (b.generation <= m_session.Generations && b.tag != u"-1")
            shown.insert(b.tag.toLongLong());
    LvCommon->clear();
    m_marks.clear();
    if (m_inbreeding) {
        QList<QTreeWidgetItem *> items;
        for (const CommonAncestorLine &l : commonAncestorLines(m_session.Stud->handle(), *m_inbreeding, shown)) {
            auto *item = new QTreeWidgetItem({l.name, l.timesSire, l.timesDam, l.share});
            item->setData(0, Qt::UserRole, l.number);
            item->setToolTip(0, l.name);
            for (int c = 1; c <= 3; ++c)
                item->setTextAlignment(c, Qt::AlignRight | Qt::AlignVCenter);
            if (l.mark >= 0) {
                const quint32 rgb = commonAncestorColour(l.mark);
                m_marks.insert(l.number, rgb);
                QPixmap swatch(12, 12);
                swatch.fill(QColor::fromRgb(rgb));
                item->setIcon(0, QIcon(swatch));
            }
            items << item;
        }
        LvCommon->addTopLevelItems(items);
    }
    for (const PedigreeBox &b : m_boxes) {
        if (PedigreeBoxLabel *label = RPed[b.index]) {
            const auto mark = m_marks.constFind(b.tag.toLongLong());
            label->setMark(b.tag != u"-1" && mark != m_marks.cend() ? QColor::fromRgb(*mark) : QColor());
        }
    }
}

void fmPedigree::placeBoxes()
{
    // One column per generation shown; the columns beyond lie off the surface.
    const double unitW = double(pb->width()) / m_session.Generations;
    const double unitH = pb->height() / 32.0;
    for (const PedigreeBox &b : m_boxes) {
        PedigreeBoxLabel *label = RPed[b.index];
        if (!label)
            continue;
        label->setGeometry(int(b.left * unitW), int(b.top * unitH), int(unitW) + 1, int(b.height * unitH) + 1);
        // A caption too tall for its box falls back to the small font.
        if (b.fontSize > 7) {
            const QFontMetrics fm(screenFont(label->font(), b.fontSize));
            const int needed = fm.boundingRect(QRect(0, 0, label->width() - 4, 10000), Qt::TextWordWrap, label->text()).height();
            label->setFont(screenFont(label->font(), needed > b.height * unitH - 0.2 * unitH ? 7 : b.fontSize));
        }
    }
}

void fmPedigree::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    if (m_loaded)
        placeBoxes();
}

void fmPedigree::RPed_Click(int index)
{
    const qint64 remembered = m_session.CurrentStockNo;
    const QString tag = RPed[index]->property("tag").toString();
    if (tag != u"-1") {
        fmStockenq::showRelative(m_session, tag.toLongLong(), this);
        return;
    }
    if (!m_createMode)
        return;
    const std::optional<AncestorTarget> target =
        ancestorTarget(m_table, index, m_session.CurrentStockNo, m_subjectType);
    if (!target)
        return;
    QPalette red = RPed[index]->palette();
    red.setColor(QPalette::Window, QColor(255, 0, 0));
    RPed[index]->setPalette(red);
    fmPedCreate create(m_session, m_prompts, target->child, target->breed, target->sire, this);
    Modal::exec(create);
    const qint64 created = create.newNumber();
    if (created != -1) {
        if (create.chosenNumber() == -1) {
            PedigreeCell &cell = m_table.cell(target->generation, target->position);
            cell.Number = qint32(created);
            Get_Animal_Details(m_session, created, cell);
        } else {
            Load_Pedigree_Table(m_session, m_table, m_session.CurrentStockNo, m_session.TestMatingSire,
                                m_session.TestMatingDam, &m_subjectType);
        }
    }
    m_session.CurrentStockNo = remembered;
    GetStockDetails();
}

void fmPedigree::showSummary(int index)
{
    PedigreeBoxLabel *box = RPed[index];
    const double unitH = pb->height() / 32.0;
    const CellLocation at = Locate_Cell(index);
    QString text = summaryText(m_table.cell(at.generation, at.position(index)), index, m_captions);
    lbrfull->setText(text.replace(u'\r', u'\n'));
    lbrfull->setFont(RPed[0]->font());
    const int height = std::max(lbrfull->sizeHint().height(), int(4 * unitH));
    const int top = box->y() <= 25 * unitH ? box->y() : box->y() + box->height() - height;
    lbrfull->setGeometry(box->x(), top, pb->width() / m_session.Generations, height);
    lbrfull->show();
    lbrfull->raise();
}

bool fmPedigree::printSheet(QPagedPaintDevice *device)
{
    FrmProgress->show();
    FrmProgress->raise();
    PedigreeSheetJob job;
    job.table = &m_table;
    job.style = m_style;
    job.generations = m_session.Generations;
    job.captions = m_captions;
    job.certifyLine = Set_Report_Titles(m_session.PrintType, m_session.PedigreeWord, m_session.CurrentStockName,
                                        m_session.CurrentStockNo == 0)
                          .certify;
    job.subjectType = m_subjectType;
    if (m_session.PrintInbreeding) {
        for (const QLabel *line : {LblCoi, LblRelationship})
            if (!line->text().isEmpty())
                job.inbreedingLines << line->text();
        job.marks = m_marks;
    }
    bool printed = false;
    {
        // Drawn while the print preview paints: the screen is given no turn.
        WorkProgress progress(this, Prb, {Lblprogress}, nullptr, WorkProgress::Turns::Still);
        QPainterSurface page(device);
        printed = printPedigreeSheet(page, m_session, m_prompts, job, progress);
    }
    FrmProgress->hide();
    return printed;
}

void fmPedigree::CmdPrint_Click()
{
    PrintJob job(this, windowTitle(), [this](QPagedPaintDevice *device) { return printSheet(device); });
    // The animal has gone since the pedigree was read: there is nothing left to show.
    if (!job.preview())
        reject();
}

void fmPedigree::CmdMerge_Click()
{
    DocumentWordProcessor word;
    FmWordMerge merged(m_session, m_prompts, word, this);
    if (!merged.ProcessAction())
        return;
    bool done = false;
    {
        HourglassScope busy(this);
        FrmProgress->show();
        WorkProgress progress(this, Prb, {Lblprogress});
        done = mergePedigree(m_session, m_prompts, word, m_table, m_session.CurrentStockNo, progress);
        FrmProgress->hide();
    }
    if (done)
        Modal::exec(merged);
    // The subject's place is read again (the merge read it for the document), and the word
    // processor let go. "UnSet", as it has always been called here, is no action at all.
    Get_Animal_Details(m_session, m_session.CurrentStockNo, m_table.cell(0, 1));
    Word_Function(word, m_prompts, u"Quit"_s);
    Word_Function(word, m_prompts, done ? u"Unset"_s : u"UnSet"_s);
}

void fmPedigree::CmdCreate_Click()
{
    m_createMode = true;
    GetStockDetails();
    CmdCreate->hide();
}

} // namespace tarvex
