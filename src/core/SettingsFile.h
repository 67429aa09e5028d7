#pragma once

#include <QDateTime>
#include <QList>
#include <QPair>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace tarvex {

/// The tree of sections and values behind one application's settings, kept in one
/// human-readable text file. Names compare without regard to case and keep their first
/// spelling; values and sections keep the order in which they were first written.
class SettingsFile
{
public:
    struct Node
    {
        QString name;
        QList<QPair<QString, QString>> values;
        std::vector<std::unique_ptr<Node>> children;

        Node *child(const QString &name) const;
        Node *addChild(const QString &name);
        int valueIndex(const QString &key) const;
    };

    /// The shared tree of the file at that path, read again when the file changed on disk.
    static std::shared_ptr<SettingsFile> at(const QString &path);

    QString path() const { return m_path; }
    Node &root() { return *m_root; }
    /// The node of a backslash-separated section path; nullptr when absent and not created.
    Node *find(const QString &section, bool create);
    bool removeSection(const QString &section);
    /// Writes the whole tree atomically; false when the file cannot be written. The first
    /// failure for each file in a run is told to writeFailed, so the user hears of it once.
    bool save();

    /// Told the path of a settings file that could not be written, once per file and run.
    static void setWriteFailureHandler(std::function<void(const QString &path)> handler);
    void reloadIfChanged();

    static QString serialise(const Node &root);
    static std::unique_ptr<Node> parse(const QString &text);

private:
    explicit SettingsFile(const QString &path);
    void load();

    QString m_path;
    std::unique_ptr<Node> m_root;
    QDateTime m_modified;
    qint64 m_size = -1;
};

} // namespace tarvex
