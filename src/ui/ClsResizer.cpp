#include "ClsResizer.h"

#include <QComboBox>
#include <QEvent>
#include <QFrame>
#include <QHeaderView>
#include <QLineEdit>
#include <QLayout>
#include <QScreen>
#include <QTableWidget>
#include <QTreeWidget>

#include <algorithm>

namespace tarvex {

ClsResizer::ClsResizer(QWidget *form, const QSize &designSize)
    : QObject(form), m_form(form), m_design(designSize)
{
    MinWidth = designSize.width();
    MinHeight = designSize.height();
    form->installEventFilter(this);
}

qreal ClsResizer::scaledFontSize(qreal designSize, qreal xRatio, qreal yRatio)
{
    return designSize * std::min(xRatio, yRatio);
}

QSize ClsResizer::openingSize(const QSize &design, const QSize &screen)
{
    const int width = screen.width() * design.width() / 640;
    const int height = screen.height() * design.height() / 480;
    return {std::min(width, screen.width()), std::min(height, screen.height())};
}

void ClsResizer::Initialise()
{
    m_records.clear();
    const auto children = m_form->findChildren<QWidget *>();
    m_records.reserve(children.size());
    for (QWidget *w : children) {
        // Only the form's own named controls: the parts of compound controls, menus and
        // pop-ups keep their own sizes.
        if (w->isWindow() || w->objectName().isEmpty() || w->objectName().startsWith(QLatin1String("qt_")))
            continue;
        // Pages of a tab strip and widgets in a layout are placed by their container.
        QWidget *parent = w->parentWidget();
        if (parent && (parent->inherits("QStackedWidget") || (parent->layout() && parent->layout()->indexOf(w) >= 0)))
            continue;
        Record r;
        r.widget = w;
        r.geometry = w->geometry();
        r.fontSize = w->font().pointSizeF();
        if (auto *tree = qobject_cast<QTreeWidget *>(w)) {
            r.kind = ListView;
            for (int c = 0; c < tree->columnCount(); ++c)
                r.columnWidths << tree->columnWidth(c);
        } else if (auto *grid = qobject_cast<QTableWidget *>(w)) {
            r.kind = Grid;
            for (int c = 0; c < grid->columnCount(); ++c)
                r.columnWidths << grid->columnWidth(c);
        } else if (qobject_cast<QComboBox *>(w)) {
            r.kind = FontHeight;
        } else if (auto *frame = qobject_cast<QFrame *>(w);
                   frame && (frame->frameShape() == QFrame::HLine || frame->frameShape() == QFrame::VLine)) {
            r.kind = Line;
        }
        m_records.push_back(r);
    }
}

void ClsResizer::Resize()
{
    if (!ResizeEnabled || m_busy || m_form->window()->isMinimized())
        return;
    const QSize size = m_form->size();
    if (size.width() < MinWidth || size.height() < MinHeight) {
        m_form->resize(std::max(size.width(), MinWidth), std::max(size.height(), MinHeight));
        return;
    }
    m_busy = true;
    const qreal rx = qreal(size.width()) / m_design.width();
    const qreal ry = qreal(size.height()) / m_design.height();
    m_fontScale = std::min(rx, ry);
    for (const Record &r : m_records) {
        QWidget *w = r.widget;
        if (!w)
            continue;
        if (r.fontSize > 0) {
            QFont f = w->font();
            f.setPointSizeF(scaledFontSize(r.fontSize, rx, ry));
            w->setFont(f);
            if (auto *combo = qobject_cast<QComboBox *>(w); combo && combo->lineEdit())
                combo->lineEdit()->setFont(f);
        }
        const QRect g(qRound(r.geometry.left() * rx), qRound(r.geometry.top() * ry), qRound(r.geometry.width() * rx),
                      qRound(r.geometry.height() * ry));
        switch (r.kind) {
        case FontHeight:
            w->setGeometry(g.left(), g.top(), g.width(), w->sizeHint().height());
            break;
        case FixedHeight:
            w->setGeometry(g.left(), g.top(), g.width(), w->height());
            break;
        case ListView:
            w->setGeometry(g);
            if (auto *tree = qobject_cast<QTreeWidget *>(w)) {
                // A list whose last column takes the room the others leave keeps doing so.
                QHeaderView *head = tree->header();
                const int last = head->stretchLastSection() ? tree->columnCount() - 1 : tree->columnCount();
                for (int c = 0; c < r.columnWidths.size() && c < last; ++c)
                    tree->setColumnWidth(c, qRound(r.columnWidths.at(c) * rx));
                if (last < tree->columnCount())
                    head->setStretchLastSection(true);
            }
            break;
        case Grid:
            w->setGeometry(g);
            if (auto *grid = qobject_cast<QTableWidget *>(w))
                for (int c = 0; c < r.columnWidths.size() && c < grid->columnCount(); ++c)
                    grid->setColumnWidth(c, qRound(r.columnWidths.at(c) * rx));
            break;
        default:
            w->setGeometry(g);
            break;
        }
    }
    m_busy = false;
}

ClsResizer *ClsResizer::of(const QWidget *window)
{
    if (!window)
        return nullptr;
    // The screens opened from a window are its children too: only a form of this window counts.
    const auto objects = window->findChildren<QObject *>();
    for (QObject *o : objects)
        if (auto *r = dynamic_cast<ClsResizer *>(o); r && r->m_form->window() == window)
            return r;
    return nullptr;
}

qreal ClsResizer::windowFontScale(const QWidget *widget)
{
    const ClsResizer *r = widget ? of(widget->window()) : nullptr;
    return r ? r->fontScale() : 1.0;
}

bool ClsResizer::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_form && event->type() == QEvent::Resize)
        Resize();
    return QObject::eventFilter(watched, event);
}

ClsResizer *FormResizeSetup(QWidget *form, const QSize &designSize)
{
    auto *resizer = new ClsResizer(form, designSize);
    resizer->Initialise();
    form->setMinimumSize(designSize);
    const QScreen *screen = form->screen();
    const QRect available = screen ? screen->availableGeometry() : QRect(0, 0, 640, 480);
    const QSize size = ClsResizer::openingSize(designSize, available.size());
    form->resize(size);
    form->move(available.left() + (available.width() - size.width()) / 2,
               available.top() + (available.height() - size.height()) / 2);
    resizer->Resize();
    return resizer;
}

} // namespace tarvex
