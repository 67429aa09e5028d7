#pragma once

#include "core/Session.h"
#include "stock/StockSummary.h"

#include <QDialog>

class QComboBox;
class QLineEdit;

namespace tarvex {

/// "Stock Enquiry": the summary of one animal, read-only, opened from a relative, a
/// parent or a search result without leaving the animal in hand.
class fmStockenq : public QDialog
{
public:
    fmStockenq(Session &session, qint64 number, QWidget *parent = nullptr);
    /// Shows an animal's summary over a window of relatives (a pedigree, a table); the
    /// animal in hand stays the one it was.
    static void showRelative(Session &session, qint64 number, QWidget *parent);

private:
    void showIdentification();

    StockSummary m_summary;
    QComboBox *CmbSid;
    QLineEdit *Rid;
};

} // namespace tarvex
