#include "FmWordMerge.h"

#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/FileChooser.h"

#include <QDir>
#include <QFileInfo>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {
constexpr int kWidth = 3600, kHeight = 2700;
} // namespace

FmWordMerge::FmWordMerge(Session &session, Prompts &prompts, WordProcessor &word, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts), m_word(word)
{
    setObjectName(u"FmWordMerge"_s);
    setWindowTitle(u"Merged Pedigree"_s);
    const auto button = [this](const char *name, const QString &caption, int row) {
        auto *b = make<QPushButton>(this, name, caption);
        place(b, 300, 240 + row * 570, 3000, 450);
        b->setAutoDefault(false);
        return b;
    };
    onAction(button("CmdWord", u"View/Edit &Document"_s, 0), &QPushButton::clicked, this,
             [this] { Word_Function(m_word, m_prompts, u"Activate"_s); });
    onAction(button("CmdSave", u"&Save Merged File"_s, 1), &QPushButton::clicked, this, &FmWordMerge::CmdSave_Click);
    onAction(button("CmdPrint", u"&Print Merged File"_s, 2), &QPushButton::clicked, this,
             [this] { Word_Function(m_word, m_prompts, u"Print"_s); });
    onAction(button("CmdCancel", u"E&xit"_s, 3), &QPushButton::clicked, this, &QDialog::accept);

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
}

bool FmWordMerge::ProcessAction()
{
    // The chooser starts where the last template was, for the run of the program.
    const QString start = m_session.MergeTemplate.isEmpty() ? QDir::homePath() : m_session.MergeTemplate;
    const QString chosen = FileChooser::open(this, u"Open Word Template"_s, start,
                                             {u"Word Documents (*.docx *.odt *.doc)"_s, u"All Files (*)"_s});
    if (chosen.isEmpty())
        return false;
    m_session.MergeTemplate = chosen;
    return Word_Function(m_word, m_prompts, u"Set"_s) && Word_Function(m_word, m_prompts, u"Open"_s, chosen);
}

void FmWordMerge::CmdSave_Click()
{
    const QFileInfo templ(m_session.MergeTemplate);
    const FileChooser::Answer answer = FileChooser::save(this, u"Save Merged Template"_s,
                                                         templ.dir().filePath(templ.completeBaseName() + u" merged"_s),
                                                         m_word.fileTypes());
    if (answer.path.isEmpty())
        return;
    saveMerged(m_word, m_prompts, m_session.MergeTemplate, answer.path, QFileInfo(answer.path).suffix());
}

} // namespace tarvex
