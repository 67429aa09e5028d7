#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "pedigree/PedigreeLayout.h"
#include "pedigree/PedigreeStyles.h"
#include "pedigree/StudInbreeding.h"

#include <QDialog>

#include <array>
#include <functional>

class QComboBox;
class QLabel;
class QProgressBar;
class QPagedPaintDevice;
class QPushButton;
class QTreeWidget;

namespace tarvex {

class ClsResizer;
class PedigreeBoxLabel;

/// The pedigree window: the ancestors of the animal in hand (or of a test mating) as a
/// tree of boxes, up to five generations, in one of five styles; beside it the coefficient
/// of inbreeding and the common ancestors, each framed in its own colour in the tree.
class fmPedigree : public QDialog
{
public:
    fmPedigree(Session &session, Prompts &prompts, QWidget *parent = nullptr);
    ~fmPedigree() override;

    /// Reads the pedigree and draws it; false when the subject cannot be found (the user
    /// has been told) and the window is not to be shown.
    bool start();
    const QList<PedigreeBox> &boxes() const { return m_boxes; }

    /// Shows the places that can be created, as the Create button does.
    void startCreating() { CmdCreate_Click(); }
    /// Prints the sheet onto a device (a printer or a PDF file); false when the subject
    /// has gone.
    bool printSheet(QPagedPaintDevice *device);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void GetStockDetails();
    void placeBoxes();
    void RPed_Click(int index);
    void showSummary(int index);
    void CmdCreate_Click();
    void CmdPrint_Click();
    void CmdMerge_Click();
    void applyTitles();
    void readInbreeding();
    void showCommonAncestors();

    Session &m_session;
    Prompts &m_prompts;
    PedigreeTable m_table;
    QString m_subjectType;
    int m_style = 1;
    bool m_loaded = false;
    bool m_createMode = false;
    PedigreeCaptions m_captions;
    QList<PedigreeBox> m_boxes;
    std::array<PedigreeBoxLabel *, 63> RPed{};

    QWidget *pb;
    QLabel *lbrfull;
    QComboBox *CmbGen, *CmbPedStyle;
    QPushButton *CmdCreate, *CmdMerge, *CmdOptions, *CmdPrint, *CmdSchResCancel;
    QWidget *FrmProgress;
    QLabel *Lblprogress;
    QProgressBar *Prb;
    ClsResizer *fResize = nullptr;

    std::optional<AnimalInbreeding> m_inbreeding;
    QHash<qint64, quint32> m_marks; // the common ancestors framed, by number
    QWidget *FrmInbreeding;
    QLabel *LblCoi, *LblRelationship;
    QTreeWidget *LvCommon;
};

} // namespace tarvex
