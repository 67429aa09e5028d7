#pragma once

#include "care/Devices.h"
#include "core/OptionsForm.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

#include <string>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;
class QStackedWidget;

namespace tarvex {

class DeviceSelector;

/// "Options": every setting of the program and of the open stud's stock type on thirteen
/// tabs. It shows what is stored when it opens; OK checks, writes only what was changed and
/// closes; Cancel leaves everything as it was, the breeds' values edited on it included.
class FmOptions : public QDialog
{
public:
    FmOptions(Session &session, Prompts &prompts, Devices &devices, QWidget *parent = nullptr);

    const OptionsForm &form() const { return m_form; }

private:
    void buildBreeds(QWidget *page);
    void buildPedigreeSheet(QWidget *page);
    void buildBackup(QWidget *page, Devices &devices);
    void buildIdentification(QWidget *page);
    void buildAffix(QWidget *page);
    void buildGeneral(QWidget *page);
    void buildDedupe(QWidget *page);
    void buildImages(QWidget *page);
    void buildGenetics(QWidget *page);
    void buildWord(QWidget *page);
    void buildAwards(QWidget *page);
    void buildAges(QWidget *page);
    void buildHeaderFooter(QWidget *page);
    void buildInbreeding(QWidget *page);
    /// Marks the group changed whenever the breeder changes the control.
    void watch(QWidget *control, OptionsForm::Group group);
    /// A caption ("Lbl" + name) and a text box on a row of a tab, showing value, watched.
    QLineEdit *textField(QWidget *page, const std::string &name, const QString &text, int row, int width,
                         const QString &value, OptionsForm::Group group);
    void enableGroups();
    void showBreed(int index);
    void keepBreed();
    QString choosePicture(const QString &title);
    void collect();
    void Tab1_Click(int tab);
    void CmdOk_Click();

    Session &m_session;
    Prompts &m_prompts;
    OptionsForm m_form;
    int m_breed = -1;

    QListWidget *Tab1;
    QStackedWidget *FrmTabs;
    QComboBox *CmbBreed, *CmbPedFont, *CmbPedStyle, *CmbGens, *CmbBackupEvery, *CmbCopies, *CmbFloppy,
        *CmbGenDatabase, *CmbInbreedingGens;
    QLineEdit *MskBrGestation, *TxtBrWM, *TLogo, *TWm, *TxtPrefix, *TxtAffix, *txtautoprefix, *TxtWeightUnit,
        *MskGestation, *TxtDefImgFolder, *TxtPoints, *MskMaxPoints, *TxtFoot;
    std::array<QLineEdit *, 3> AId{};
    std::array<QLineEdit *, 4> TxtHead{};
    QCheckBox *ChkBrStretch, *CbWm, *CbAutobackup, *CbBackupPrompt, *CbRemind, *ChkAutoFloppyBackup, *ChkGen,
        *ChkWord, *CbPoints;
    std::array<QCheckBox *, 3> ChkDedupe{};
    std::array<QRadioButton *, 2> OptPed{}, OptColour{}, OptGeneMode{}, OptMatchColour{};
    QLabel *Label25, *LblWordDetected;
    QListWidget *LstColMatch, *LstAge;
    DeviceSelector *CmbDrive;
};

} // namespace tarvex
