#pragma once

#include "pedigree/WordMerge.h"
#include "platform/TemplateDocument.h"

#include <QTemporaryDir>

#include <memory>

namespace tarvex {

/// The word processor of this machine for merges. Templates in .docx and .odt are filled by
/// the program itself; LibreOffice, where it is installed, widens the formats: old .doc
/// templates are read through it, merged documents can be saved as .doc or PDF, and it
/// prints them. Viewing a merged document opens a copy of it in the desktop's program for
/// its kind.
class DocumentWordProcessor : public WordProcessor
{
public:
    DocumentWordProcessor();
    ~DocumentWordProcessor() override;

    /// LibreOffice's program, or empty when it is not installed.
    static QString officeSuite();

    bool available() override { return true; }
    void open(const QString &templatePath) override;
    bool find(const QString &text) override;
    bool replace(const QString &text, const QString &value) override;
    bool image(const QString &text, const QString &picturePath) override;
    void save(const QString &path, const QString &extension) override;
    void print() override;
    void activate() override;
    void quit() override;
    QStringList fileTypes() override;

private:
    TemplateDocument &document();
    /// The merged document written to the work folder in its own format.
    QString workingCopy();
    /// Runs LibreOffice with the arguments; throws WordError when it fails.
    void runOffice(const QStringList &arguments, const QString &doing);

    std::unique_ptr<TemplateDocument> m_document;
    std::unique_ptr<QTemporaryDir> m_work;
    QString m_templateName;
    bool m_quit = false;
};

} // namespace tarvex
