#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "reporting/LitterStats.h"

#include <QDialog>

#include <array>

class QGroupBox;
class QPagedPaintDevice;
class QRadioButton;
class QTableWidget;

namespace tarvex {

/// "Litter Statistics for : <name>": what an animal has produced, as the summary of its
/// litters or its young counted by sex, breed, colour or status, on screen and printed.
class FmStats : public QDialog
{
public:
    /// The statistics of the young of the sire or of the dam (-1 for neither).
    FmStats(Session &session, Prompts &prompts, qint64 sire, qint64 dam, const QString &name,
            QWidget *parent = nullptr);

    /// Reads the young and shows the summary; false, after "No stock Found", when the
    /// animal has none (the screen is then not to be shown).
    bool start();
    /// Draws the view on show on a printer or a PDF file.
    bool printTable(QPagedPaintDevice *device) const;

private:
    void OStatType_Click(int index);

    LitterStats m_stats;
    qint64 m_sire, m_dam;
    StatsTable m_table;

    std::array<QRadioButton *, 5> OStatType;
    QGroupBox *FrmSum;
    QTableWidget *GrSum;
};

} // namespace tarvex
