#include "SettingsFile.h"

#include "TextFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSaveFile>
#include <QSet>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

QStringList sectionParts(const QString &section)
{
    QStringList parts;
    for (const QString &p : section.split(u'\\'))
        if (!p.isEmpty())
            parts << p;
    return parts;
}

QString escape(const QString &s, bool isKey)
{
    QString out;
    out.reserve(s.size());
    for (qsizetype i = 0; i < s.size(); ++i) {
        const QChar c = s.at(i);
        if (c == u'\\')
            out += u"\\\\"_s;
        else if (c == u'\n')
            out += u"\\n"_s;
        else if (c == u'\r')
            out += u"\\r"_s;
        else if (isKey && (c == u'=' || (i == 0 && (c == u'[' || c == u'#' || c == u' '))))
            out += u'\\' + QString(c);
        else
            out += c;
    }
    return out;
}

QString unescape(QStringView s)
{
    QString out;
    out.reserve(s.size());
    for (qsizetype i = 0; i < s.size(); ++i) {
        QChar c = s.at(i);
        if (c == u'\\' && i + 1 < s.size()) {
            c = s.at(++i);
            if (c == u'n')
                c = u'\n';
            else if (c == u'r')
                c = u'\r';
        }
        out += c;
    }
    return out;
}

void write(const SettingsFile::Node &node, const QString &path, QString &out)
{
    if (!path.isEmpty() || !node.values.isEmpty())
        out += u'[' + path + u"]\n"_s;
    for (const auto &[key, value] : node.values)
        out += escape(key, true) + u'=' + escape(value, false) + u'\n';
    for (const auto &child : node.children)
        write(*child, path.isEmpty() ? child->name : path + u'\\' + child->name, out);
}

} // namespace

SettingsFile::Node *SettingsFile::Node::child(const QString &childName) const
{
    for (const auto &c : children)
        if (c->name.compare(childName, Qt::CaseInsensitive) == 0)
            return c.get();
    return nullptr;
}

SettingsFile::Node *SettingsFile::Node::addChild(const QString &childName)
{
    if (Node *existing = child(childName))
        return existing;
    children.push_back(std::make_unique<Node>());
    children.back()->name = childName;
    return children.back().get();
}

int SettingsFile::Node::valueIndex(const QString &key) const
{
    for (int i = 0; i < values.size(); ++i)
        if (values.at(i).first.compare(key, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

std::shared_ptr<SettingsFile> SettingsFile::at(const QString &path)
{
    // One tree per file for the whole program, so that every reader sees every write.
    static QHash<QString, std::shared_ptr<SettingsFile>> files;
    auto &file = files[path];
    if (!file)
        file.reset(new SettingsFile(path));
    else
        file->reloadIfChanged();
    return file;
}

SettingsFile::SettingsFile(const QString &path) : m_path(path)
{
    load();
}

void SettingsFile::load()
{
    const QFileInfo info(m_path);
    m_modified = info.lastModified();
    m_size = info.exists() ? info.size() : -1;
    QFile f(m_path);
    if (!f.open(QIODevice::ReadOnly)) {
        m_root = std::make_unique<Node>();
        return;
    }
    m_root = parse(TextFile::decode(f.readAll()));
}

void SettingsFile::reloadIfChanged()
{
    const QFileInfo info(m_path);
    const qint64 size = info.exists() ? info.size() : -1;
    if (size != m_size || info.lastModified() != m_modified)
        load();
}

std::unique_ptr<SettingsFile::Node> SettingsFile::parse(const QString &text)
{
    // A damaged file is read as far as it goes: lines that make no sense are passed over.
    auto root = std::make_unique<Node>();
    Node *current = root.get();
    for (const QString &raw : TextFile::lines(text)) {
        const QString line = raw;
        if (line.isEmpty() || line.startsWith(u'#') || line.contains(QChar(0)))
            continue;
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            current = root.get();
            for (const QString &part : sectionParts(line.mid(1, line.size() - 2)))
                current = current->addChild(part);
            continue;
        }
        qsizetype eq = -1;
        for (qsizetype i = 0; i < line.size(); ++i) {
            if (line.at(i) == u'\\') {
                ++i;
            } else if (line.at(i) == u'=') {
                eq = i;
                break;
            }
        }
        if (eq < 0)
            continue;
        const QString key = unescape(QStringView(line).left(eq));
        const QString value = unescape(QStringView(line).mid(eq + 1));
        const int at = current->valueIndex(key);
        if (at >= 0)
            current->values[at].second = value;
        else
            current->values.append({key, value});
    }
    return root;
}

QString SettingsFile::serialise(const Node &root)
{
    QString out = u"# Tarvex settings. Sections nest with a backslash; edit with care.\n"_s;
    write(root, QString(), out);
    return out;
}

SettingsFile::Node *SettingsFile::find(const QString &section, bool create)
{
    Node *node = m_root.get();
    for (const QString &part : sectionParts(section)) {
        Node *next = node->child(part);
        if (!next) {
            if (!create)
                return nullptr;
            next = node->addChild(part);
        }
        node = next;
    }
    return node;
}

bool SettingsFile::removeSection(const QString &section)
{
    QStringList parts = sectionParts(section);
    if (parts.isEmpty())
        return false;
    const QString last = parts.takeLast();
    Node *parent = find(parts.join(u'\\'), false);
    if (!parent)
        return false;
    for (auto it = parent->children.begin(); it != parent->children.end(); ++it) {
        if ((*it)->name.compare(last, Qt::CaseInsensitive) == 0) {
            parent->children.erase(it);
            return true;
        }
    }
    return false;
}

namespace {
std::function<void(const QString &)> &writeFailureHandler()
{
    static std::function<void(const QString &)> handler;
    return handler;
}

void writeFailed(const QString &path)
{
    static QSet<QString> told;
    if (told.contains(path))
        return;
    told.insert(path);
    if (writeFailureHandler())
        writeFailureHandler()(path);
}
} // namespace

void SettingsFile::setWriteFailureHandler(std::function<void(const QString &path)> handler)
{
    writeFailureHandler() = std::move(handler);
}

bool SettingsFile::save()
{
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    QSaveFile f(m_path);
    if (!f.open(QIODevice::WriteOnly)) {
        load(); // the tree goes back to what the file holds
        writeFailed(m_path);
        return false;
    }
    f.write(serialise(*m_root).toUtf8());
    if (!f.commit()) {
        load();
        writeFailed(m_path);
        return false;
    }
    const QFileInfo info(m_path);
    m_modified = info.lastModified();
    m_size = info.size();
    return true;
}

} // namespace tarvex
