#pragma once

#include "core/Session.h"

#include <QDialog>

class QCheckBox;
class QComboBox;

namespace tarvex {

/// "Select Genetic Colour": which colour of the genetics files an animal's colour text is,
/// with the choice of keeping the match for next time.
class FmColourMatch : public QDialog
{
public:
    FmColourMatch(const Session &session, const QString &colour, QWidget *parent = nullptr);

    /// The chosen colour-table name; empty when cancelled or nothing was chosen.
    QString chosen() const { return m_chosen; }
    bool saveMatch() const { return m_save; }

private:
    QComboBox *CmbGColour, *CmbGPattern, *CmbGCoatType;
    QCheckBox *ChkColMatch;
    QString m_chosen;
    bool m_save = false;
};

} // namespace tarvex
