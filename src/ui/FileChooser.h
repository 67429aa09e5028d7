#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

namespace tarvex {

/// Every file and folder the breeder picks goes through here: the desktop's choosers, or,
/// in a screen test, a hook that answers in the breeder's place.
namespace FileChooser {

struct Request
{
    enum class Kind { Open, Save, Folder };
    Kind kind = Kind::Open;
    QString title;
    QString start;       // the folder, or for a save the name, the chooser starts at
    QStringList filters; // "Word Document (*.docx)", ...
};

struct Answer
{
    QString path;   // empty when the breeder cancelled
    QString filter; // the filter chosen (a save)
};

using Hook = std::function<Answer(QWidget *parent, const Request &request)>;

/// Installs a hook that answers every chooser; an empty hook restores the desktop's.
void setHook(Hook hook);

/// A file to read; empty when cancelled.
QString open(QWidget *parent, const QString &title, const QString &start, const QStringList &filters);
/// A file to write, and the filter chosen; an extension the filter names is added to a name
/// typed without one.
Answer save(QWidget *parent, const QString &title, const QString &start, const QStringList &filters);
/// A folder; empty when cancelled.
QString folder(QWidget *parent, const QString &title, const QString &start);

} // namespace FileChooser
} // namespace tarvex
