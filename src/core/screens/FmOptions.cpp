#include "FmOptions.h"

#include "pedigree/PedigreeStyles.h"
#include "store/StudDatabase.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/DeviceSelector.h"
#include "ui/FileChooser.h"
#include "ui/Hourglass.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;
using Group = OptionsForm::Group;

namespace {

constexpr int kWidth = 11400, kHeight = 6900;
// The list of tabs down the left, the chosen tab's page beside it.
constexpr int kTabsWidth = 2400;
// A row of a tab: its top, and the columns of captions and controls.
constexpr int kRow = 480, kTop = 240, kCaption = 240, kField = 3000;

int rowTop(int row)
{
    return kTop + row * kRow;
}

const QStringList kEvery = {u"Time"_s, u"2nd Time"_s, u"3rd Time"_s, u"4th Time"_s, u"5th Time"_s};
const QList<int> kRemindEvery = {1, 2, 3, 4, 5, 10, 15, 20, 30, 40, 50};

QLabel *caption(QWidget *page, const char *name, const QString &text, int row, int width = kField - kCaption - 120)
{
    auto *label = make<QLabel>(page, name, text);
    place(label, kCaption, rowTop(row) + 30, width, 330);
    return label;
}

QLineEdit *edit(QWidget *page, const char *name, int row, int width = 4200, int left = kField)
{
    auto *e = make<QLineEdit>(page, name);
    place(e, left, rowTop(row), width, 360);
    return e;
}

QLineEdit *numberEdit(QWidget *page, const char *name, int row, int most)
{
    // Only digits can be typed: a number box never holds text.
    QLineEdit *e = edit(page, name, row, 1200);
    e->setValidator(new QIntValidator(0, most, e));
    return e;
}

QCheckBox *check(QWidget *page, const char *name, const QString &text, int row, int left = kCaption)
{
    auto *c = make<QCheckBox>(page, name, text);
    place(c, left, rowTop(row), 8000 - left, 360);
    return c;
}

QComboBox *combo(QWidget *page, const char *name, const QStringList &items, int row, int width = 3000)
{
    auto *c = make<QComboBox>(page, name);
    c->addItems(items);
    place(c, kField, rowTop(row), width, 360);
    return c;
}

std::array<QRadioButton *, 2> pair(QWidget *page, const char *frameName, const QString &title, const char *name,
                                   const QString &first, const QString &second, int row)
{
    auto *frame = make<QGroupBox>(page, frameName, title);
    place(frame, kCaption, rowTop(row), 8000, 800);
    std::array<QRadioButton *, 2> buttons{};
    buttons[0] = make<QRadioButton>(frame, (std::string(name) + "_0").c_str(), first);
    place(buttons[0], 240, 360, 3600, 330);
    buttons[1] = make<QRadioButton>(frame, (std::string(name) + "_1").c_str(), second);
    place(buttons[1], 4000, 360, 3600, 330);
    return buttons;
}

void fillTicks(QListWidget *list, const QList<QPair<QString, bool>> &items)
{
    for (const auto &[text, ticked] : items) {
        auto *item = new QListWidgetItem(text, list);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
    }
}

QList<QPair<QString, bool>> ticksOf(const QListWidget *list)
{
    QList<QPair<QString, bool>> items;
    for (int i = 0; i < list->count(); ++i)
        items.append({list->item(i)->text(), list->item(i)->checkState() == Qt::Checked});
    return items;
}

} // namespace

FmOptions::FmOptions(Session &session, Prompts &prompts, Devices &devices, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts)
{
    // The breeds and statuses are the open stud's; a stud just registered has none yet.
    const bool ownLists = session.Stud && QFileInfo(session.Stud->handle().path())
                                                 .completeBaseName()
                                                 .compare(session.StockType, Qt::CaseInsensitive) == 0;
    m_form = readOptionsForm(session, ownLists ? session.Lists.breeds : QStringList(),
                             ownLists ? session.Lists.statuses : QStringList());
    setObjectName(u"FmOptions"_s);
    setWindowTitle(u"Options"_s);
    // Thirteen tabs are too many for one row: they stand as a list, every one in sight.
    Tab1 = make<QListWidget>(this, "Tab1");
    place(Tab1, 120, 120, kTabsWidth, 6000);
    Tab1->addItems(optionsTabs());
    FrmTabs = make<QStackedWidget>(this, "FrmTabs");
    place(FrmTabs, 240 + kTabsWidth, 120, kWidth - 360 - kTabsWidth, 6000);
    QList<QWidget *> pages;
    for (int i = 0; i < Tab1->count(); ++i) {
        auto *page = make<QGroupBox>(FrmTabs, ("FrmTab_" + std::to_string(i)).c_str(), Tab1->item(i)->text());
        FrmTabs->addWidget(page);
        pages << page;
    }
    onAction(Tab1, &QListWidget::currentRowChanged, this, &FmOptions::Tab1_Click);
    buildBreeds(pages[0]);
    buildPedigreeSheet(pages[1]);
    buildBackup(pages[2], devices);
    buildIdentification(pages[3]);
    buildAffix(pages[4]);
    buildGeneral(pages[5]);
    buildDedupe(pages[6]);
    buildImages(pages[7]);
    buildGenetics(pages[8]);
    buildWord(pages[9]);
    buildAwards(pages[10]);
    buildAges(pages[11]);
    buildHeaderFooter(pages[12]);
    buildInbreeding(pages[13]);
    enableGroups();
    Tab1->setCurrentRow(0);

    auto *ok = make<QPushButton>(this, "CmdOk", u"O&K"_s);
    place(ok, kWidth - 3480, 6300, 1500, 420);
    auto *cancel = make<QPushButton>(this, "CmdCancel", u"&Cancel"_s);
    place(cancel, kWidth - 1860, 6300, 1500, 420);
    onAction(ok, &QPushButton::clicked, this, &FmOptions::CmdOk_Click);
    onAction(cancel, &QPushButton::clicked, this, &QDialog::reject);

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
}

void FmOptions::Tab1_Click(int tab)
{
    if (tab < 0)
        return;
    FrmTabs->setCurrentIndex(tab);
    // The tab's first control takes the focus.
    const QList<QWidget *> controls = FrmTabs->widget(tab)->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (QWidget *w : controls) {
        if (w->focusPolicy() != Qt::NoFocus && w->isEnabled()) {
            w->setFocus();
            break;
        }
    }
}

void FmOptions::watch(QWidget *control, Group group)
{
    const auto mark = [this, group] { m_form.change(group); };
    if (auto *e = qobject_cast<QLineEdit *>(control))
        connect(e, &QLineEdit::textEdited, this, mark);
    else if (auto *c = qobject_cast<QComboBox *>(control))
        connect(c, &QComboBox::activated, this, mark);
    else if (auto *b = qobject_cast<QAbstractButton *>(control))
        connect(b, &QAbstractButton::clicked, this, mark);
    else if (auto *l = qobject_cast<QListWidget *>(control))
        connect(l, &QListWidget::itemChanged, this, mark);
}

QLineEdit *FmOptions::textField(QWidget *page, const std::string &name, const QString &text, int row, int width,
                                const QString &value, Group group)
{
    caption(page, ("Lbl" + name).c_str(), text, row);
    QLineEdit *e = edit(page, name.c_str(), row, width);
    e->setText(value);
    watch(e, group);
    return e;
}

void FmOptions::buildBreeds(QWidget *page)
{
    caption(page, "LblBreed", u"Breed"_s, 0);
    CmbBreed = combo(page, "CmbBreed", {}, 0, 4200);
    for (const OptionsForm::Breed &b : std::as_const(m_form.breeds))
        CmbBreed->addItem(b.name);
    caption(page, "LblBrGestation", u"Gestation (days)"_s, 1);
    MskBrGestation = numberEdit(page, "MskBrGestation", 1, 999);
    caption(page, "LblBrWM", u"Watermark"_s, 2);
    TxtBrWM = edit(page, "TxtBrWM", 2);
    auto *browse = make<QPushButton>(page, "CmdWm", u"&Browse"_s);
    place(browse, kField + 4320, rowTop(2), 1200, 360);
    ChkBrStretch = check(page, "ChkBrStretch", u"Stretch the watermark to the page"_s, 3, kField);
    onAction(CmbBreed, &QComboBox::currentIndexChanged, this, [this](int index) {
        keepBreed();
        showBreed(index);
    });
    onAction(browse, &QPushButton::clicked, this, [this] {
        const QString picture = choosePicture(u"Select Watermark"_s);
        if (!picture.isEmpty())
            TxtBrWM->setText(picture);
    });
    showBreed(CmbBreed->currentIndex());
}

void FmOptions::showBreed(int index)
{
    m_breed = index;
    const bool any = index >= 0 && index < m_form.breeds.size();
    const OptionsForm::Breed b = any ? m_form.breeds[index] : OptionsForm::Breed{};
    MskBrGestation->setText(b.gestation);
    TxtBrWM->setText(b.watermark);
    ChkBrStretch->setChecked(b.stretch);
    for (QWidget *w : {static_cast<QWidget *>(MskBrGestation), static_cast<QWidget *>(TxtBrWM),
                       static_cast<QWidget *>(ChkBrStretch)})
        w->setEnabled(any);
}

void FmOptions::keepBreed()
{
    if (m_breed < 0 || m_breed >= m_form.breeds.size())
        return;
    OptionsForm::Breed &b = m_form.breeds[m_breed];
    b.gestation = MskBrGestation->text();
    b.watermark = TxtBrWM->text();
    b.stretch = ChkBrStretch->isChecked();
}

QString FmOptions::choosePicture(const QString &title)
{
    return FileChooser::open(this, title, m_session.DataFolder,
                             {u"Pictures (*.bmp *.jpg *.jpeg *.png *.gif *.wmf *.ico *.emf *.rle)"_s});
}

void FmOptions::buildPedigreeSheet(QWidget *page)
{
    caption(page, "LblPedStyle", u"Pedigree style"_s, 0);
    QStringList styles;
    for (const PedigreeStyle &s : pedigreeStyles(m_session.ColourWord))
        styles << s.text;
    CmbPedStyle = combo(page, "CmbPedStyle", styles, 0, 4200);
    CmbPedStyle->setCurrentIndex(std::clamp(m_form.pedigreeStyle, 1, int(styles.size())) - 1);
    caption(page, "LblGens", u"Generations"_s, 1);
    CmbGens = combo(page, "CmbGens", {u"3 Generations"_s, u"4 Generations"_s, u"5 Generations"_s}, 1);
    CmbGens->setCurrentIndex(m_form.generations - 3);
    caption(page, "LblPedFont", u"Pedigree font"_s, 2);
    CmbPedFont = combo(page, "CmbPedFont", QFontDatabase::families(), 2, 4200);
    // A font this machine does not have leaves the list unset.
    CmbPedFont->setCurrentIndex(CmbPedFont->findText(m_form.pedigreeFont));
    caption(page, "LblLogo", u"Logo"_s, 3);
    TLogo = edit(page, "TLogo", 3);
    TLogo->setText(m_form.logo);
    auto *logo = make<QPushButton>(page, "CmdLogo", u"&Browse"_s);
    place(logo, kField + 4320, rowTop(3), 1200, 360);
    caption(page, "LblWm", u"Watermark"_s, 4);
    TWm = edit(page, "TWm", 4);
    TWm->setText(m_form.watermark);
    auto *wm = make<QPushButton>(page, "CmdTWm", u"B&rowse"_s);
    place(wm, kField + 4320, rowTop(4), 1200, 360);
    CbWm = check(page, "CbWm", u"Stretch the watermark to the page"_s, 5, kField);
    CbWm->setChecked(m_form.watermarkStretch);
    onAction(logo, &QPushButton::clicked, this, [this] {
        const QString picture = choosePicture(u"Select Logo"_s);
        if (!picture.isEmpty()) {
            TLogo->setText(picture);
            m_form.change(Group::PedigreeSheet);
        }
    });
    onAction(wm, &QPushButton::clicked, this, [this] {
        const QString picture = choosePicture(u"Select Watermark"_s);
        if (!picture.isEmpty()) {
            TWm->setText(picture);
            m_form.change(Group::PedigreeSheet);
        }
    });
    for (QWidget *w : {static_cast<QWidget *>(CmbPedStyle), static_cast<QWidget *>(CmbGens),
                       static_cast<QWidget *>(CmbPedFont), static_cast<QWidget *>(TLogo),
                       static_cast<QWidget *>(TWm), static_cast<QWidget *>(CbWm)})
        watch(w, Group::PedigreeSheet);
}

void FmOptions::buildBackup(QWidget *page, Devices &devices)
{
    CbAutobackup = check(page, "CbAutobackup", u"Back up the database automatically beside it"_s, 0);
    CbAutobackup->setChecked(m_form.autoBackup);
    caption(page, "LblBackupEvery", u"Back up every"_s, 1);
    CmbBackupEvery = combo(page, "CmbBackupEvery", kEvery, 1);
    CmbBackupEvery->setCurrentIndex(m_form.backupEvery);
    caption(page, "LblCopies", u"Copies to keep"_s, 2);
    QStringList copies;
    for (int n = 1; n <= 10; ++n)
        copies << QString::number(n);
    CmbCopies = combo(page, "CmbCopies", copies, 2, 1200);
    CmbCopies->setCurrentIndex(std::clamp(m_form.keepBackups, 1, 10) - 1);
    CbBackupPrompt = check(page, "CbBackupPrompt", u"Ask before each backup"_s, 3, kField);
    CbBackupPrompt->setChecked(m_form.promptBackup);

    CbRemind = check(page, "CbRemind", u"Remind me to back up to an external device"_s, 5);
    CbRemind->setChecked(m_form.remindBackup);
    caption(page, "LblFloppy", u"Remind me every"_s, 6);
    QStringList reminders = kEvery;
    for (int n : kRemindEvery.mid(5))
        reminders << QString::number(n) + u"th Time"_s;
    CmbFloppy = combo(page, "CmbFloppy", reminders, 6);
    CmbFloppy->setCurrentIndex(std::max(0, int(kRemindEvery.indexOf(m_form.remindEvery))));
    ChkAutoFloppyBackup = check(page, "ChkAutoFloppyBackup", u"Back up to the device when I agree"_s, 7, kField);
    ChkAutoFloppyBackup->setChecked(m_form.autoFloppyBackup);
    caption(page, "LblDrive", u"Backup device"_s, 8);
    // A device's name and folder can be long: the list has the tab's whole width.
    CmbDrive = make<DeviceSelector>(page, "CmbDrive", devices);
    place(CmbDrive, kCaption, rowTop(9), 8100, 360);
    CmbDrive->setFolder(m_form.backupDrive);
    for (QWidget *w : {static_cast<QWidget *>(CbAutobackup), static_cast<QWidget *>(CmbBackupEvery),
                       static_cast<QWidget *>(CmbCopies), static_cast<QWidget *>(CbBackupPrompt),
                       static_cast<QWidget *>(CbRemind), static_cast<QWidget *>(CmbFloppy),
                       static_cast<QWidget *>(ChkAutoFloppyBackup), static_cast<QWidget *>(CmbDrive)})
        watch(w, Group::Backup);
    onAction(CbAutobackup, &QCheckBox::toggled, this, &FmOptions::enableGroups);
    onAction(CbRemind, &QCheckBox::toggled, this, &FmOptions::enableGroups);
}

void FmOptions::buildIdentification(QWidget *page)
{
    const QString captions[] = {u"Main identification"_s, u"Second identification"_s, u"Third identification"_s};
    for (int i = 0; i < 3; ++i)
        AId[std::size_t(i)] = textField(page, "AId_" + std::to_string(i), captions[i], i, 3000,
                                        m_form.ids[std::size_t(i)], Group::Identification);
    txtautoprefix = textField(page, "txtautoprefix", u"Automatic name prefix"_s, 4, 3000, m_form.autoPrefix,
                              Group::Identification);
}

void FmOptions::buildAffix(QWidget *page)
{
    TxtPrefix = textField(page, "TxtPrefix", u"Prefix (Alt+P)"_s, 0, 4200, m_form.prefix, Group::Affix);
    TxtAffix = textField(page, "TxtAffix", u"Suffix (Alt+S)"_s, 1, 4200, m_form.suffix, Group::Affix);
}

void FmOptions::buildGeneral(QWidget *page)
{
    TxtWeightUnit = textField(page, "TxtWeightUnit", u"Unit of weight"_s, 0, 1200, m_form.weightUnit, Group::General);
    caption(page, "LblGestation", u"Gestation (days)"_s, 1);
    MskGestation = numberEdit(page, "MskGestation", 1, 999);
    MskGestation->setText(m_form.gestation);
    watch(MskGestation, Group::General);
    OptPed = pair(page, "FraPed", u"Terminology"_s, "OptPed", u"Pedigree"_s, u"Family Tree"_s, 3);
    OptPed[std::size_t(m_form.pedigreeTerminology)]->setChecked(true);
    OptColour = pair(page, "FraColour", u"Spelling"_s, "OptColour", u"Colour"_s, u"Color"_s, 5);
    OptColour[std::size_t(m_form.colourSpelling)]->setChecked(true);
    for (auto *b : {OptPed[0], OptPed[1], OptColour[0], OptColour[1]})
        watch(b, Group::Terminology);
}

void FmOptions::buildInbreeding(QWidget *page)
{
    caption(page, "LblInbreedingGens", u"Generations"_s, 0);
    QStringList choices{u"All known generations"_s, u"1 Generation"_s};
    for (int g = 2; g <= 30; ++g)
        choices << u"%1 Generations"_s.arg(g);
    CmbInbreedingGens = combo(page, "CmbInbreedingGens", choices, 0);
    CmbInbreedingGens->setCurrentIndex(m_form.inbreedingGenerations);
    watch(CmbInbreedingGens, Group::Inbreeding);
    auto *note = make<QLabel>(page, "LblInbreedingNote",
                              u"The coefficient of inbreeding (COI) counts the ancestors within these generations "
                              u"of the animal; those further back are taken as unrelated."_s);
    note->setWordWrap(true);
    place(note, kCaption, rowTop(1), 8000, 700);
}

void FmOptions::buildDedupe(QWidget *page)
{
    place(make<QLabel>(page, "LblDedupe", u"You can select which fields you want Tarvex to deduplify on."_s),
          kCaption, rowTop(0), 8000, 330);
    const QString captions[] = {u"Deduplify Name after entering the Name"_s,
                                u"Deduplify the Main Id after entering the Main Id"_s,
                                u"Deduplify the Name and Main Id (both must match) after entering the Main Id"_s};
    for (int i = 0; i < 3; ++i) {
        ChkDedupe[std::size_t(i)] = check(page, ("ChkDedupe_" + std::to_string(i)).c_str(), captions[i], i + 1);
        ChkDedupe[std::size_t(i)]->setChecked(m_form.dedupe[std::size_t(i)]);
        watch(ChkDedupe[std::size_t(i)], Group::Dedupe);
    }
}

void FmOptions::buildImages(QWidget *page)
{
    TxtDefImgFolder = textField(page, "TxtDefImgFolder", u"Default image folder"_s, 0, 5400, m_form.imageFolder,
                                Group::ImageFolder);
}

void FmOptions::buildGenetics(QWidget *page)
{
    ChkGen = check(page, "ChkGen", u"Enable Genetics"_s, 0);
    ChkGen->setChecked(m_form.genetics);
    Label25 = caption(page, "Label25", u"Genetics files"_s, 1);
    CmbGenDatabase = combo(page, "CmbGenDatabase", m_form.geneticsFiles, 1);
    CmbGenDatabase->setCurrentIndex(m_form.geneticsFiles.indexOf(m_form.geneticsFile));
    if (CmbGenDatabase->currentIndex() < 0)
        CmbGenDatabase->setCurrentIndex(m_form.geneticsFiles.indexOf(m_session.StockType));
    OptGeneMode = pair(page, "FraGeneMode", u"Mode"_s, "OptGeneMode", u"Advanced"_s, u"Basic"_s, 2);
    OptGeneMode[m_form.geneticsAdvanced ? 0 : 1]->setChecked(true);
    OptMatchColour = pair(page, "FraMatchColour", u"Match colours by"_s, "OptMatchColour", u"Colour Only"_s,
                          u"Colour and Breed "_s, 4);
    OptMatchColour[std::size_t(m_form.matchColour)]->setChecked(true);
    caption(page, "LblColMatch", u"Colour matches kept"_s, 6);
    LstColMatch = make<QListWidget>(page, "LstColMatch");
    place(LstColMatch, kField, rowTop(6), 5400, 1800);
    fillTicks(LstColMatch, m_form.colourMatches);
    for (QWidget *w : {static_cast<QWidget *>(ChkGen), static_cast<QWidget *>(CmbGenDatabase),
                       static_cast<QWidget *>(OptGeneMode[0]), static_cast<QWidget *>(OptGeneMode[1]),
                       static_cast<QWidget *>(OptMatchColour[0]), static_cast<QWidget *>(OptMatchColour[1]),
                       static_cast<QWidget *>(LstColMatch)})
        watch(w, Group::Genetics);
    onAction(ChkGen, &QCheckBox::toggled, this, &FmOptions::enableGroups);
}

void FmOptions::buildWord(QWidget *page)
{
    LblWordDetected = caption(page, "LblWordDetected", m_form.wordDetected ? u"Detected"_s : u"Not Detected"_s, 0,
                              8000);
    ChkWord = check(page, "ChkWord", u"Look for a way to merge documents again at the next start"_s, 1);
}

void FmOptions::buildAwards(QWidget *page)
{
    CbPoints = check(page, "CbPoints", u"Awards collect points"_s, 0);
    CbPoints->setChecked(m_form.points);
    TxtPoints = textField(page, "TxtPoints", u"Name of the points"_s, 1, 3000, m_form.pointsName, Group::Points);
    caption(page, "LblMaxPoints", u"Most points in one award"_s, 2);
    MskMaxPoints = numberEdit(page, "MskMaxPoints", 2, 9999);
    MskMaxPoints->setText(m_form.maxPoints);
    watch(CbPoints, Group::Points);
    watch(MskMaxPoints, Group::Points);
    onAction(CbPoints, &QCheckBox::toggled, this, &FmOptions::enableGroups);
}

void FmOptions::buildAges(QWidget *page)
{
    place(make<QLabel>(page, "LblAge", u"Animals of the statuses ticked show no age:"_s), kCaption, rowTop(0), 8000,
          330);
    LstAge = make<QListWidget>(page, "LstAge");
    place(LstAge, kCaption, rowTop(1), 5400, 3600);
    fillTicks(LstAge, m_form.ages);
}

void FmOptions::buildHeaderFooter(QWidget *page)
{
    for (int i = 0; i < 4; ++i)
        TxtHead[std::size_t(i)] = textField(page, "TxtHead_" + std::to_string(i), u"Header line %1"_s.arg(i + 1), i,
                                            5400, m_form.header[std::size_t(i)], Group::HeaderFooter);
    TxtFoot = textField(page, "TxtFoot", u"Footer line"_s, 5, 5400, m_form.footer, Group::HeaderFooter);
}

void FmOptions::enableGroups()
{
    Label25->setEnabled(ChkGen->isChecked());
    CmbGenDatabase->setEnabled(ChkGen->isChecked());
    for (QWidget *w : {static_cast<QWidget *>(CmbBackupEvery), static_cast<QWidget *>(CmbCopies),
                       static_cast<QWidget *>(CbBackupPrompt)})
        w->setEnabled(CbAutobackup->isChecked());
    for (QWidget *w : {static_cast<QWidget *>(CmbFloppy), static_cast<QWidget *>(ChkAutoFloppyBackup),
                       static_cast<QWidget *>(CmbDrive)})
        w->setEnabled(CbRemind->isChecked());
    TxtPoints->setEnabled(CbPoints->isChecked());
    MskMaxPoints->setEnabled(CbPoints->isChecked());
}

void FmOptions::collect()
{
    OptionsForm &f = m_form;
    keepBreed();
    f.autoBackup = CbAutobackup->isChecked();
    f.backupEvery = std::max(0, CmbBackupEvery->currentIndex());
    f.keepBackups = CmbCopies->currentIndex() + 1;
    f.promptBackup = CbBackupPrompt->isChecked();
    f.remindBackup = CbRemind->isChecked();
    f.remindEvery = kRemindEvery.value(CmbFloppy->currentIndex(), 10);
    f.autoFloppyBackup = ChkAutoFloppyBackup->isChecked();
    f.backupDrive = CmbDrive->folder();
    f.searchWordAgain = ChkWord->isChecked();
    f.points = CbPoints->isChecked();
    f.pointsName = TxtPoints->text();
    f.maxPoints = MskMaxPoints->text();
    f.logo = TLogo->text();
    f.watermark = TWm->text();
    f.watermarkStretch = CbWm->isChecked();
    f.pedigreeStyle = CmbPedStyle->currentIndex() + 1;
    f.generations = CmbGens->currentIndex() + 3;
    f.inbreedingGenerations = CmbInbreedingGens->currentIndex();
    if (CmbPedFont->currentIndex() >= 0)
        f.pedigreeFont = CmbPedFont->currentText();
    for (int i = 0; i < 4; ++i)
        f.header[std::size_t(i)] = TxtHead[std::size_t(i)]->text();
    f.footer = TxtFoot->text();
    f.pedigreeTerminology = OptPed[1]->isChecked() ? 1 : 0;
    f.colourSpelling = OptColour[1]->isChecked() ? 1 : 0;
    f.gestation = MskGestation->text();
    f.weightUnit = TxtWeightUnit->text();
    f.genetics = ChkGen->isChecked();
    f.geneticsFile = CmbGenDatabase->currentText();
    f.geneticsAdvanced = OptGeneMode[0]->isChecked();
    f.matchColour = OptMatchColour[1]->isChecked() ? 1 : 0;
    f.colourMatches = ticksOf(LstColMatch);
    f.prefix = TxtPrefix->text();
    f.suffix = TxtAffix->text();
    for (int i = 0; i < 3; ++i) {
        f.ids[std::size_t(i)] = AId[std::size_t(i)]->text();
        f.dedupe[std::size_t(i)] = ChkDedupe[std::size_t(i)]->isChecked();
    }
    f.autoPrefix = txtautoprefix->text();
    f.imageFolder = TxtDefImgFolder->text().trimmed();
    f.ages = ticksOf(LstAge);
}

void FmOptions::CmdOk_Click()
{
    collect();
    const std::optional<OptionsFault> fault = validateOptionsForm(m_form);
    // The terms as they will be stored.
    for (int i = 0; i < 3; ++i)
        AId[std::size_t(i)]->setText(m_form.ids[std::size_t(i)]);
    if (fault) {
        m_prompts.show(fault->text, u"Error"_s, Prompts::Icon::Exclamation);
        Tab1->setCurrentRow(fault->tab);
        if (auto *control = findChild<QWidget *>(fault->control))
            control->setFocus();
        return;
    }
    {
        HourglassScope busy(this);
        writeOptionsForm(m_session, m_form);
    }
    accept();
}

} // namespace tarvex
