#include "FileChooser.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tarvex::FileChooser {

namespace {

Hook &hook()
{
    static Hook h;
    return h;
}

/// The first extension a filter names: "docx" of "Word Document (*.docx)".
QString extensionOf(const QString &filter)
{
    const QRegularExpressionMatch m = QRegularExpression(u"\\*\\.([A-Za-z0-9]+)"_s).match(filter);
    return m.hasMatch() ? m.captured(1) : QString();
}

} // namespace

void setHook(Hook h)
{
    hook() = std::move(h);
}

QString open(QWidget *parent, const QString &title, const QString &start, const QStringList &filters)
{
    if (hook())
        return hook()(parent, {Request::Kind::Open, title, start, filters}).path;
    return QFileDialog::getOpenFileName(parent, title, start, filters.join(u";;"_s));
}

Answer save(QWidget *parent, const QString &title, const QString &start, const QStringList &filters)
{
    Answer answer;
    if (hook()) {
        answer = hook()(parent, {Request::Kind::Save, title, start, filters});
    } else {
        QString chosen = filters.value(0);
        answer.path = QFileDialog::getSaveFileName(parent, title, start, filters.join(u";;"_s), &chosen);
        answer.filter = chosen;
    }
    const QString extension = extensionOf(answer.filter);
    if (!answer.path.isEmpty() && !extension.isEmpty() && QFileInfo(answer.path).suffix().isEmpty())
        answer.path += u'.' + extension;
    return answer;
}

QString folder(QWidget *parent, const QString &title, const QString &start)
{
    if (hook())
        return hook()(parent, {Request::Kind::Folder, title, start, {}}).path;
    return QFileDialog::getExistingDirectory(parent, title, start);
}

} // namespace tarvex::FileChooser
