#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "pedigree/WordMerge.h"

#include <QDialog>

namespace tarvex {

/// The merged pedigree document: view or edit it in the word processor, save it under a
/// name of the breeder's (never over the template), or print it.
class FmWordMerge : public QDialog
{
public:
    FmWordMerge(Session &session, Prompts &prompts, WordProcessor &word, QWidget *parent = nullptr);

    /// Asks for the template ("Open Word Template") and opens it; false when the breeder
    /// cancelled or it could not be opened (they have been told).
    bool ProcessAction();

private:
    void CmdSave_Click();

    Session &m_session;
    Prompts &m_prompts;
    WordProcessor &m_word;
};

} // namespace tarvex
