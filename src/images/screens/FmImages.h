#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "images/ImageLibrary.h"

#include <QDialog>
#include <QHash>
#include <QPixmap>

#include <array>
#include <functional>

class QCheckBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPagedPaintDevice;
class QPushButton;
class QScrollBar;

namespace tarvex {

/// "Image List": the pictures of one animal, two at a time with their captions, comments and
/// files, scrolled by the bar under them. A click on a picture's slot marks it, Select (or
/// a double click) shows that entry alone with Print, Update, Delete and Back, and New or
/// Update open the entry's details with Ok and Cancel. One entry may be the default
/// picture, the one printed on the animal's sheet. Pictures are read when they come into
/// a slot, once while the window is open; a file that is gone or is no picture shows the
/// stand-by picture and stays in the list.
class FmImages : public QDialog
{
public:
    FmImages(Session &session, Prompts &prompts, qint64 number, const QString &name,
             QWidget *parent = nullptr);


    /// The entries as the window holds them.
    const ImageLibrary &library() const { return m_library; }

    /// Draws the entry on show (Print of one entry) or every entry (Print All) on a printer
    /// or a PDF file, one picture to a page; false when there is nothing to print.
    bool printSelected(QPagedPaintDevice *device);
    bool printAll(QPagedPaintDevice *device);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Slot
    {
        QFrame *Pcholder = nullptr;
        QFrame *PicCentre = nullptr;
        QLabel *imgpic = nullptr;
        QLabel *lblcaption = nullptr;
        QLabel *lblcomments = nullptr;
        QLabel *lblpath = nullptr;
        QLabel *LblDefault = nullptr;
        int entry = 0; // the entry shown, from 1; 0 for none
    };

    void buildSlots();
    void buildDetails();
    void buildButtons();

    void ShowImages();
    void LoadImage(int slot, int entry);
    /// Puts a slot's picture where the fit of its own size puts it in the slot.
    void placePicture(QFrame *frame, QLabel *picture, const QSize &natural);
    void highlight(int entry);
    void ActivateButtons(bool newEnabled, bool updateEnabled, bool selectEnabled);
    /// The largest a picture box can become with the window on its screen: what a picture
    /// is read for, so that a larger window still shows it sharp.
    QSize readingBox(const QWidget *box) const;

    enum class View
    {
        List,
        Entry,
        Maintenance
    };
    void showView(View view);
    /// The entry panel with the texts of an entry (0: blank, for a new one).
    void fillDetails(int entry);
    void showSelected(const QPixmap &picture, const QSize &natural);

    void CmdSelect_Click();
    void cmdNew_Click();
    void cmdUpdate_Click();
    void cmdDelete_Click();
    void cmdBack_Click();
    void CmdOk_Click();
    void CmdMaintCancel_Click();
    void CmdBrowse_Click();
    void CmdPrint_Click();
    void cmdPrintAll_Click();
    void TxtPath_LostFocus();
    /// Reads the file into the chosen picture's box; true, the path taken, when it is a
    /// picture.
    bool TryImage(const QString &path);

    Session &m_session;
    Prompts &m_prompts;
    ImageLibrary m_library;
    /// The pictures read this visit, by imageno.
    QHash<qint64, QPixmap> m_pictures;
    QPixmap m_standBy;
    int m_highlighted = 0;
    int m_onShow = 0; // the entry shown alone or amended; 0 for a new one
    View m_view = View::List;
    View m_cancelTo = View::List;
    QString m_triedPath; // the path last found to be a picture
    QPixmap m_chosen;
    QSize m_chosenSize;

    std::array<Slot, 2> m_slots;
    QScrollBar *HsView = nullptr;
    QPushButton *cmdNew = nullptr;
    QWidget *pbcontrol = nullptr;
    QPushButton *cmdPrintAll = nullptr;
    QPushButton *CmdSelect = nullptr;
    QWidget *pbupdate = nullptr;
    QPushButton *cmdUpdate = nullptr;
    QWidget *pbMaint = nullptr;
    QGroupBox *frImgDets = nullptr;
    QLineEdit *TxtCaption = nullptr;
    QLineEdit *TxtComments = nullptr;
    QLineEdit *TxtPath = nullptr;
    QCheckBox *ChkDefault = nullptr;
    QPushButton *CmdBrowse = nullptr;
    QPushButton *CmdMaintCancel = nullptr;
    QFrame *pbSelCentre = nullptr;
    QLabel *imgSelected = nullptr;
    QLabel *pbNotFound = nullptr;
};

} // namespace tarvex
