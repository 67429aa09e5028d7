#include "FmImpExp.h"

#include "care/StudTransfer.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/DeviceSelector.h"
#include "ui/Hourglass.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {
constexpr int kWidth = 7200, kHeight = 5100;
} // namespace

FmImpExp::FmImpExp(Session &session, Prompts &prompts, Devices &devices, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts), m_devices(devices)
{
    setObjectName(u"FmImpExp"_s);
    setWindowTitle(u"Import/Export Database(s)"_s);

    auto *about = make<QLabel>(
        this, "LblInfo",
        u"Use this facility when transferring Tarvex to a new computer. You will need a device to transfer the "
        u"database(s) to that can be allocated a drive letter (for example a USB data stick, a CD/RW, an SD card, a "
        u"common network drive, etc). This device must be compatible with both the old and new computer."_s);
    about->setWordWrap(true);
    about->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    place(about, 240, 180, kWidth - 480, 1200);

    // One group each way: the device, and the button that copies.
    const auto group = [this](const char *name, const QString &title, int top, const char *labelName,
                              const QString &label, const char *selectorName, const char *buttonName,
                              const QString &caption) {
        auto *g = make<QGroupBox>(this, name, title);
        place(g, 240, top, kWidth - 480, 1620);
        place(make<QLabel>(g, labelName, label), 240, 360, kWidth - 960, 300);
        auto *selector = make<DeviceSelector>(g, selectorName, m_devices);
        place(selector, 240, 780, 4560, 360);
        auto *b = make<QPushButton>(g, buttonName, caption);
        b->setAutoDefault(false);
        place(b, kWidth - 720 - 1500, 750, 1500, 420);
        return std::pair{selector, b};
    };
    const auto [exportDevice, exportButton] =
        group("FraExport", u"Export Data From This Computer"_s, 1500, "LblExport",
              u"Select the device you want to copy the database(s) to:"_s, "drvexp", "cmdexport", u"&Export"_s);
    const auto [importDevice, importButton] =
        group("FraImport", u"Import Data To This Computer"_s, 3300, "LblImport",
              u"Select the device the database(s) are to be imported from: "_s, "drvimp", "cmdimport", u"&Import"_s);
    drvexp = exportDevice;
    drvimp = importDevice;

    onAction(exportButton, &QPushButton::clicked, this, &FmImpExp::cmdexport_Click);
    onAction(importButton, &QPushButton::clicked, this, &FmImpExp::cmdimport_Click);

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
}

QStringList FmImpExp::studNames() const
{
    QStringList names;
    for (const auto &entry : m_session.Catalogue)
        names << entry.first;
    return names;
}

void FmImpExp::cmdexport_Click()
{
    bool done = false;
    {
        HourglassScope busy(this);
        done = StudTransfer::exportStuds(m_session, m_prompts, studNames(), drvexp->folder());
    }
    if (done)
        accept();
}

void FmImpExp::cmdimport_Click()
{
    HourglassScope busy(this);
    StudTransfer::importStuds(m_session, m_prompts, m_devices, studNames(), drvimp->folder());
}

} // namespace tarvex
