#include "FmImages.h"

#include "platform/PictureReader.h"
#include "platform/QPainterSurface.h"
#include "ui/Action.h"
#include "ui/FileChooser.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/FocusMoves.h"
#include "ui/Hourglass.h"
#include "ui/PrintJob.h"

#include <QApplication>
#include <QCheckBox>
#include <QFrame>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {

constexpr int kWidth = 9000, kHeight = 6300;
// A slot: its frame, the picture's box, and the four lines under it.
constexpr int kSlotTop = 120, kSlotWidth = 4320, kSlotHeight = 4560;
constexpr int kInset = 90, kPictureWidth = kSlotWidth - 2 * kInset, kPictureHeight = 3000;
// The row of buttons under the list, and the panels' buttons in it from the right.
constexpr int kButtonsTop = 5280, kButtonHeight = 420, kButtonWidth = 1400, kButtonStep = 1580;
constexpr int kPanelLeft = 1620, kPanelWidth = kWidth - 120 - kPanelLeft;

// Where the full text of a label that shows it shortened is kept.
const char *const kFullText = "fullText";
// How the text of a label is shortened when it is wider than the label.
const char *const kElide = "elide";
// The picture's own size, by which its place in its box is worked out.
const char *const kNatural = "natural";

/// The stand-by picture: a landscape crossed through, for a file that cannot be shown.
QPixmap standByPicture()
{
    QPixmap p(160, 120);
    p.fill(QColor(0xe8, 0xe8, 0xe8));
    QPainter g(&p);
    g.setRenderHint(QPainter::Antialiasing);
    g.setPen(QPen(QColor(0x90, 0x90, 0x90), 2));
    g.drawRect(QRectF(1, 1, 158, 118));
    g.setPen(Qt::NoPen);
    g.setBrush(QColor(0xb4, 0xb4, 0xb4));
    g.drawPolygon(
        QPolygon({QPoint(12, 104), QPoint(58, 48), QPoint(88, 84), QPoint(112, 62), QPoint(148, 104)}));
    g.drawEllipse(QPoint(120, 32), 12, 12);
    g.setPen(QPen(QColor(0xc0, 0x30, 0x30), 5, Qt::SolidLine, Qt::RoundCap));
    g.drawLine(28, 20, 132, 100);
    g.drawLine(132, 20, 28, 100);
    return p;
}

/// Shows a text in a label of fixed width: whole when it fits, otherwise shortened with
/// "..." and whole in the label's tip. Shortened again whenever the label's size or font
/// changes.
void setFittedText(QLabel *label, const QString &text)
{
    label->setProperty(kFullText, text);
    const int room = std::max(0, label->contentsRect().width() - 2);
    const QString shown =
        label->fontMetrics().elidedText(text, Qt::TextElideMode(label->property(kElide).toInt()), room);
    label->setText(shown);
    label->setToolTip(shown == text ? QString() : text);
}

} // namespace

FmImages::FmImages(Session &session, Prompts &prompts, qint64 number, const QString &name, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts), m_library(session, prompts, number, name),
      m_standBy(standByPicture())
{
    setObjectName(u"FmImages"_s);
    setWindowTitle(u"Image List"_s);

    buildSlots();
    buildDetails();
    buildButtons();

    pbNotFound = make<QLabel>(this, "pbNotFound");
    pbNotFound->setPixmap(m_standBy);
    place(pbNotFound, 0, 0, m_standBy.width() * Design::kTwipsPerPixel,
          m_standBy.height() * Design::kTwipsPerPixel);
    pbNotFound->hide();

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));

    // The pictures are placed within their boxes by their own proportions, not by the
    // form's: they are made after the resizer has taken the form's controls.
    for (int i = 0; i < 2; ++i) {
        Slot &s = m_slots[i];
        s.imgpic = make<QLabel>(s.PicCentre, ("imgpic_" + std::to_string(i)).c_str());
        s.imgpic->setScaledContents(true);
        s.imgpic->installEventFilter(this);
    }
    imgSelected = make<QLabel>(pbSelCentre, "imgSel");
    imgSelected->setScaledContents(true);

    m_library.Form_Load();
    showView(View::List);
}

void FmImages::buildSlots()
{
    for (int i = 0; i < 2; ++i) {
        const auto name = [i](const char *control) { return std::string(control) + "_" + std::to_string(i); };
        Slot &s = m_slots[i];
        s.Pcholder = make<QFrame>(this, name("Pcholder").c_str());
        s.Pcholder->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
        s.Pcholder->setAutoFillBackground(true);
        place(s.Pcholder, 120 + i * (kSlotWidth + 120), kSlotTop, kSlotWidth, kSlotHeight);
        s.PicCentre = make<QFrame>(s.Pcholder, name("PicCentre").c_str());
        s.PicCentre->setFrameStyle(QFrame::Box | QFrame::Plain);
        place(s.PicCentre, kInset, kInset, kPictureWidth, kPictureHeight);

        const auto line = [&](const char *control, int top, int height, Qt::TextElideMode elide) {
            auto *l = make<QLabel>(s.Pcholder, name(control).c_str());
            l->setProperty(kElide, int(elide));
            place(l, kInset, top, kPictureWidth, height);
            l->installEventFilter(this);
            return l;
        };
        s.lblcaption = line("lblcaption", 3150, 330, Qt::ElideRight);
        QFont bold = s.lblcaption->font();
        bold.setBold(true);
        s.lblcaption->setFont(bold);
        s.lblcomments = line("lblcomments", 3480, 330, Qt::ElideRight);
        // A long path keeps its start and the file's name.
        s.lblpath = line("lblpath", 3810, 300, Qt::ElideMiddle);
        s.LblDefault = make<QLabel>(s.Pcholder, name("LblDefault").c_str(), u"Default Print Image"_s);
        place(s.LblDefault, kInset, 4140, kPictureWidth, 300);
        s.LblDefault->installEventFilter(this);

        for (QWidget *w : std::initializer_list<QWidget *>{s.Pcholder, s.PicCentre})
            w->installEventFilter(this);
    }
    HsView = make<QScrollBar>(this, "HsView", Qt::Horizontal);
    place(HsView, 120, kSlotTop + kSlotHeight + 90, kWidth - 240, 270);
    HsView->setSingleStep(1);
    // A click beside the handle shows the next pair.
    HsView->setPageStep(2);
    onAction(HsView, &QScrollBar::valueChanged, this, [this] { ShowImages(); });
}

void FmImages::buildDetails()
{
    frImgDets = make<QGroupBox>(this, "frImgDets", u"Image Details"_s);
    place(frImgDets, 120, kSlotTop, kWidth - 240, kSlotHeight);
    QWidget *f = frImgDets;
    const auto caption = [f](const char *name, const QString &text, int left, int top, int width) {
        place(make<QLabel>(f, name, text), left, top, width, 300);
    };
    caption("LblCaption", u"Title"_s, 240, 360, 4000);
    TxtCaption = make<QLineEdit>(f, "TxtCaption");
    place(TxtCaption, 240, 660, 4000, 340);
    caption("LblComments", u"Comments"_s, 240, 1140, 4000);
    TxtComments = make<QLineEdit>(f, "TxtComments");
    place(TxtComments, 240, 1440, 4000, 340);
    ChkDefault = make<QCheckBox>(f, "ChkDefault", u"Default Image"_s);
    place(ChkDefault, 240, 1980, 3000, 330);

    pbSelCentre = make<QFrame>(f, "pbSelCentre");
    pbSelCentre->setFrameStyle(QFrame::Box | QFrame::Plain);
    place(pbSelCentre, 4380, 360, kPictureWidth, kPictureHeight);
    pbSelCentre->installEventFilter(this);

    caption("LblPath", u"Image Path"_s, 240, 3660, 1100);
    TxtPath = make<QLineEdit>(f, "TxtPath");
    place(TxtPath, 1380, 3620, 5700, 340);
    TxtPath->installEventFilter(this);
    CmdBrowse = make<QPushButton>(f, "CmdBrowse", u"&Browse"_s);
    CmdBrowse->setAutoDefault(false);
    place(CmdBrowse, 7200, 3600, 1200, 380);
    onAction(CmdBrowse, &QPushButton::clicked, this, &FmImages::CmdBrowse_Click);

    QWidget *const order[] = {TxtCaption, TxtComments, ChkDefault, TxtPath, CmdBrowse};
    for (std::size_t i = 1; i < std::size(order); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
}

void FmImages::buildButtons()
{
    const auto button = [](QWidget *panel, const char *name, const QString &text, int fromRight) {
        auto *b = Design::panelButton(panel, name, text, kPanelWidth - kButtonWidth - fromRight * kButtonStep,
                                      kButtonWidth, kButtonHeight);
        b->setAutoDefault(false);
        return b;
    };
    cmdNew = make<QPushButton>(this, "cmdNew", u"&New"_s);
    cmdNew->setAutoDefault(false);
    place(cmdNew, 120, kButtonsTop, kButtonWidth, kButtonHeight);
    onAction(cmdNew, &QPushButton::clicked, this, &FmImages::cmdNew_Click);

    const auto panel = [this](const char *name) {
        auto *p = make<QWidget>(this, name);
        place(p, kPanelLeft, kButtonsTop, kPanelWidth, kButtonHeight);
        return p;
    };
    pbcontrol = panel("pbcontrol");
    cmdPrintAll = button(pbcontrol, "cmdPrintAll", u"&Print All"_s, 2);
    CmdSelect = button(pbcontrol, "CmdSelect", u"&Select"_s, 1);
    auto *close = button(pbcontrol, "CmdFormCancel", u"&Close"_s, 0);
    onAction(cmdPrintAll, &QPushButton::clicked, this, &FmImages::cmdPrintAll_Click);
    onAction(CmdSelect, &QPushButton::clicked, this, &FmImages::CmdSelect_Click);
    onAction(close, &QPushButton::clicked, this, &QDialog::reject);

    pbupdate = panel("pbupdate");
    auto *print = button(pbupdate, "CmdPrint", u"&Print"_s, 3);
    cmdUpdate = button(pbupdate, "cmdUpdate", u"&Update"_s, 2);
    auto *remove = button(pbupdate, "cmdDelete", u"&Delete"_s, 1);
    auto *back = button(pbupdate, "cmdBack", u"&Back"_s, 0);
    onAction(print, &QPushButton::clicked, this, &FmImages::CmdPrint_Click);
    onAction(cmdUpdate, &QPushButton::clicked, this, &FmImages::cmdUpdate_Click);
    onAction(remove, &QPushButton::clicked, this, &FmImages::cmdDelete_Click);
    onAction(back, &QPushButton::clicked, this, &FmImages::cmdBack_Click);

    pbMaint = panel("pbMaint");
    auto *ok = button(pbMaint, "CmdOk", u"&Ok"_s, 1);
    CmdMaintCancel = button(pbMaint, "CmdMaintCancel", u"&Cancel"_s, 0);
    onAction(ok, &QPushButton::clicked, this, &FmImages::CmdOk_Click);
    onAction(CmdMaintCancel, &QPushButton::clicked, this, &FmImages::CmdMaintCancel_Click);
}

QSize FmImages::readingBox(const QWidget *box) const
{
    QSizeF size = box->contentsRect().size();
    if (const QScreen *s = screen(); s && width() > 0 && height() > 0) {
        // The box grows with the window, up to the screen.
        const QSize room = s->availableGeometry().size();
        const double grow = std::max({1.0, double(room.width()) / width(), double(room.height()) / height()});
        size *= grow;
    }
    return (size * devicePixelRatioF()).toSize();
}

void FmImages::placePicture(QFrame *frame, QLabel *picture, const QSize &natural)
{
    picture->setProperty(kNatural, natural);
    const QRect inside = frame->contentsRect();
    const QRect at = fitPicture(natural, inside.size());
    picture->setGeometry(at.translated(inside.topLeft()));
    picture->setVisible(!at.isEmpty());
}

void FmImages::ActivateButtons(bool newEnabled, bool updateEnabled, bool selectEnabled)
{
    cmdNew->setEnabled(newEnabled);
    cmdUpdate->setEnabled(updateEnabled);
    CmdSelect->setEnabled(selectEnabled);
}

void FmImages::showView(View view)
{
    m_view = view;
    const bool list = view == View::List;
    pbcontrol->setVisible(list);
    HsView->setVisible(list);
    pbupdate->setVisible(view == View::Entry);
    pbMaint->setVisible(view == View::Maintenance);
    frImgDets->setVisible(!list);
    const bool editing = view == View::Maintenance;
    for (QLineEdit *field : {TxtCaption, TxtComments, TxtPath})
        field->setReadOnly(!editing);
    ChkDefault->setEnabled(editing);
    CmdBrowse->setEnabled(editing);
    if (list) {
        // Print of one entry prints the marked one from here on.
        m_onShow = 0;
        ShowImages();
        return;
    }
    for (Slot &s : m_slots)
        s.Pcholder->hide();
    ActivateButtons(false, view == View::Entry, false);
}

void FmImages::ShowImages()
{
    const int entries = m_library.count();
    const ScrollRange range = scrollRange(entries);
    {
        // A shorter list moves the bar back: the view is built once, below.
        const QSignalBlocker still(HsView);
        HsView->setRange(range.minimum, range.maximum);
    }
    const ListButtons buttons = listButtons(entries);
    HsView->setEnabled(buttons.scrollOn);
    cmdPrintAll->setEnabled(buttons.printAllOn);
    ActivateButtons(buttons.newOn, false, buttons.selectOn);

    for (int i = 0; i < 2; ++i) {
        Slot &s = m_slots[i];
        s.entry = slotEntry(HsView->value(), i, entries);
        if (s.entry == 0) {
            s.Pcholder->hide();
            s.imgpic->clear();
            continue;
        }
        const ImageEntry &e = m_library.entry(s.entry);
        setFittedText(s.lblcaption, e.Caption);
        setFittedText(s.lblcomments, e.Comments);
        setFittedText(s.lblpath, e.Path);
        s.LblDefault->setVisible(e.Default);
        LoadImage(i, s.entry);
        s.Pcholder->show();
    }
    // The marked entry stays marked while it is in view; otherwise the first one in view is.
    const bool inView =
        m_highlighted != 0 && (m_slots[0].entry == m_highlighted || m_slots[1].entry == m_highlighted);
    highlight(inView ? m_highlighted : m_slots[0].entry);
}

void FmImages::LoadImage(int slot, int entry)
{
    Slot &s = m_slots[slot];
    ImageEntry &e = m_library.entry(entry);
    if (e.state == LoadState::NotTried) {
        PictureRead r = PictureReader::read(e.Path, readingBox(s.PicCentre));
        if (r.found == PictureFound::Picture) {
            m_pictures.insert(e.imageno, QPixmap::fromImage(std::move(r.image)));
            e.size = r.size;
            e.state = LoadState::Loaded;
        } else {
            // Not tried again while the window is open; the entry stays in the list.
            m_pictures.remove(e.imageno);
            e.state = LoadState::Failed;
        }
    }
    const bool loaded = e.state == LoadState::Loaded;
    s.imgpic->setPixmap(loaded ? m_pictures.value(e.imageno) : m_standBy);
    placePicture(s.PicCentre, s.imgpic, loaded ? e.size : m_standBy.size());
}

void FmImages::highlight(int entry)
{
    m_highlighted = entry;
    for (Slot &s : m_slots) {
        const bool on = entry != 0 && s.entry == entry;
        s.Pcholder->setBackgroundRole(on ? QPalette::Highlight : QPalette::Window);
        for (QLabel *l : {s.lblcaption, s.lblcomments, s.lblpath, s.LblDefault})
            l->setForegroundRole(on ? QPalette::HighlightedText : QPalette::WindowText);
    }
}

void FmImages::fillDetails(int entry)
{
    if (entry == 0) {
        TxtCaption->clear();
        TxtComments->clear();
        TxtPath->clear();
        ChkDefault->setChecked(false);
        m_triedPath.clear();
        m_chosen = QPixmap();
        m_chosenSize = QSize();
        imgSelected->clear();
        imgSelected->hide();
        return;
    }
    const ImageEntry &e = m_library.entry(entry);
    TxtCaption->setText(e.Caption);
    TxtComments->setText(e.Comments);
    TxtPath->setText(e.Path);
    ChkDefault->setChecked(e.Default);
    m_triedPath = e.Path;
    const bool loaded = e.state == LoadState::Loaded;
    m_chosen = loaded ? m_pictures.value(e.imageno) : QPixmap();
    m_chosenSize = loaded ? e.size : QSize();
    showSelected(loaded ? m_chosen : m_standBy, loaded ? e.size : m_standBy.size());
}

void FmImages::showSelected(const QPixmap &picture, const QSize &natural)
{
    imgSelected->setPixmap(picture);
    placePicture(pbSelCentre, imgSelected, natural);
}

void FmImages::CmdSelect_Click()
{
    if (m_highlighted == 0)
        return;
    m_onShow = m_highlighted;
    fillDetails(m_onShow);
    showView(View::Entry);
}

void FmImages::cmdNew_Click()
{
    m_onShow = 0;
    m_cancelTo = View::List;
    fillDetails(0);
    showView(View::Maintenance);
    TxtCaption->setFocus();
}

void FmImages::cmdUpdate_Click()
{
    if (m_onShow == 0)
        return;
    m_cancelTo = View::Entry;
    showView(View::Maintenance);
    TxtCaption->setFocus();
}

void FmImages::CmdMaintCancel_Click()
{
    if (m_cancelTo == View::Entry && m_onShow != 0) {
        // The entry as it was saved.
        fillDetails(m_onShow);
        showView(View::Entry);
        return;
    }
    showView(View::List);
}

void FmImages::cmdBack_Click()
{
    showView(View::List);
}

bool FmImages::TryImage(const QString &path)
{
    // The wait cursor alone: the window keeps its focus, which is where this was asked from.
    QApplication::setOverrideCursor(Qt::WaitCursor);
    PictureRead r = PictureReader::read(path, readingBox(pbSelCentre));
    QApplication::restoreOverrideCursor();
    if (!m_library.TryImage(r.found)) {
        // The path stays as it was before.
        TxtPath->setText(m_triedPath);
        return false;
    }
    m_triedPath = path;
    TxtPath->setText(path);
    m_chosen = QPixmap::fromImage(std::move(r.image));
    m_chosenSize = r.size;
    showSelected(m_chosen, m_chosenSize);
    return true;
}

void FmImages::TxtPath_LostFocus()
{
    const QString path = TxtPath->text().trimmed();
    if (path != TxtPath->text())
        TxtPath->setText(path);
    // An empty path is told by Ok; a path already found good is not read again.
    if (path.isEmpty() || path == m_triedPath)
        return;
    TryImage(path);
}

void FmImages::CmdBrowse_Click()
{
    const ImageFolder folder = PrepareImageFolder(m_session);
    const QString title = u"Find Image"_s;
    const QString filter = PictureReader::fileFilter();
    const QString path = FileChooser::open(this, title, folder.path, filter.split(u";;"_s));
    if (path.isEmpty())
        return;
    TryImage(path);
}

void FmImages::CmdOk_Click()
{
    // A path typed and not yet tried (Ok pressed from the path itself) is tried first, once
    // there is a title to save it under.
    const QString typed = TxtPath->text().trimmed();
    if (!TxtCaption->text().trimmed().isEmpty() && !typed.isEmpty() && typed != m_triedPath &&
        !TryImage(typed)) {
        TxtPath->setFocus();
        return;
    }
    ImageForm form{TxtCaption->text(), TxtComments->text(), TxtPath->text(), ChkDefault->isChecked()};
    QString focus;
    int saved = 0;
    if (!m_library.CmdOk_Click(form, m_onShow, &focus, &saved)) {
        // Refused: what was typed stays on the screen.
        if (auto *w = findChild<QWidget *>(focus))
            w->setFocus();
        return;
    }
    ImageEntry &e = m_library.entry(saved);
    if (e.state == LoadState::NotTried && !m_chosen.isNull() && m_triedPath == e.Path) {
        // The picture just chosen was read for a box of a slot's size: it serves the slot.
        m_pictures.insert(e.imageno, m_chosen);
        e.size = m_chosenSize;
        e.state = LoadState::Loaded;
    }
    if (m_onShow == 0) {
        // A new entry is the last: the view moves to show it.
        const QSignalBlocker still(HsView);
        HsView->setRange(scrollRange(m_library.count()).minimum, scrollRange(m_library.count()).maximum);
        HsView->setValue(HsView->maximum());
    }
    m_highlighted = saved;
    showView(View::List);
}

void FmImages::cmdDelete_Click()
{
    const int index = m_onShow;
    if (index == 0)
        return;
    const qint64 imageno = m_library.entry(index).imageno;
    if (!m_library.CmdDelete_Click(index))
        return;
    // The entry goes; its file stays where it is.
    m_pictures.remove(imageno);
    m_onShow = 0;
    m_highlighted = 0;
    showView(View::List);
}

bool FmImages::printSelected(QPagedPaintDevice *device)
{
    const int index = m_onShow != 0 ? m_onShow : m_highlighted;
    if (index == 0)
        return false;
    HourglassScope busy(this);
    QPainterSurface page(device);
    return printImages(page, m_session.StudName, m_library.name(), {m_library.entry(index)});
}

bool FmImages::printAll(QPagedPaintDevice *device)
{
    HourglassScope busy(this);
    QPainterSurface page(device);
    return printImages(page, m_session.StudName, m_library.name(), m_library.entries());
}

void FmImages::CmdPrint_Click()
{
    PrintJob job(this, m_library.name() + u" Images"_s,
                 [this](QPagedPaintDevice *device) { return printSelected(device); });
    job.setOrientation(QPageLayout::Portrait);
    job.preview();
}

void FmImages::cmdPrintAll_Click()
{
    PrintJob job(this, m_library.name() + u" Images"_s,
                 [this](QPagedPaintDevice *device) { return printAll(device); });
    job.setOrientation(QPageLayout::Portrait);
    job.preview();
}

bool FmImages::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        for (const Slot &s : m_slots) {
            auto *w = qobject_cast<QWidget *>(watched);
            if (!w || s.entry == 0 || (w != s.Pcholder && !s.Pcholder->isAncestorOf(w)))
                continue;
            const int entry = s.entry;
            const bool twice = event->type() == QEvent::MouseButtonDblClick;
            runAction(twice ? u"Select"_s : QString(), [&] {
                highlight(entry);
                if (twice && CmdSelect->isEnabled())
                    CmdSelect_Click();
            });
            return true;
        }
        break;
    case QEvent::Resize:
    case QEvent::FontChange:
        if (auto *frame = qobject_cast<QFrame *>(watched); frame && event->type() == QEvent::Resize) {
            for (const Slot &s : m_slots)
                if (frame == s.PicCentre && s.imgpic)
                    placePicture(frame, s.imgpic, s.imgpic->property(kNatural).toSize());
            if (frame == pbSelCentre && imgSelected)
                placePicture(frame, imgSelected, imgSelected->property(kNatural).toSize());
        }
        if (auto *label = qobject_cast<QLabel *>(watched); label && label->property(kFullText).isValid())
            setFittedText(label, label->property(kFullText).toString());
        break;
    case QEvent::FocusOut:
        if (watched == TxtPath && movedWithinWindow(event) && m_view == View::Maintenance) {
            // Leaving for Cancel, Browse or Ok: they see to the path themselves.
            const QWidget *next = QApplication::focusWidget();
            if (next != CmdMaintCancel && next != CmdBrowse && next != findChild<QWidget *>(u"CmdOk"_s))
                runAction(QString(), [this] { TxtPath_LostFocus(); });
        }
        break;
    default:
        break;
    }
    return QDialog::eventFilter(watched, event);
}

void FmImages::keyPressEvent(QKeyEvent *event)
{
    // Escape gives up the entry in hand, as Cancel and Back do; from the list it closes the
    // window.
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier && m_view != View::List) {
        runAction(u"Cancel"_s, [this] {
            if (m_view == View::Maintenance)
                CmdMaintCancel_Click();
            else
                cmdBack_Click();
        });
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

} // namespace tarvex
