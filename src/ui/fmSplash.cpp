#include "fmSplash.h"

#include "Design.h"

#include <QCoreApplication>
#include <QLabel>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace tarvex {

QString fmSplash::versionLine()
{
    return u"Tarvex Systems      Version "_s + QCoreApplication::applicationVersion();
}

QString fmSplash::platformLine()
{
    return QSysInfo::prettyProductName();
}

fmSplash::fmSplash() : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint)
{
    setObjectName(u"fmSplash"_s);
    setStyleSheet(u"#fmSplash { background: #f4efe4; border: 2px solid #6b4f2a; }"_s);
    resize(Design::px(7200), Design::px(3600));

    auto *logo = Design::make<QLabel>(this, "ImgLogo", u"Tarvex"_s);
    QFont big = logo->font();
    big.setPointSize(36);
    big.setBold(true);
    logo->setFont(big);
    logo->setStyleSheet(u"color: #6b4f2a;"_s);
    logo->setAlignment(Qt::AlignCenter);
    Design::place(logo, 0, 300, 7200, 1000);

    auto *program =
        Design::make<QLabel>(this, "LblProgram", u"Pedigree and Livestock Management System (including Colour Genetics)"_s);
    program->setAlignment(Qt::AlignCenter);
    program->setWordWrap(true);
    Design::place(program, 300, 1400, 6600, 700);

    auto *version = Design::make<QLabel>(this, "LblVersion", versionLine());
    version->setAlignment(Qt::AlignCenter);
    Design::place(version, 300, 2300, 6600, 400);

    auto *platform = Design::make<QLabel>(this, "LblPlatform", platformLine());
    platform->setAlignment(Qt::AlignCenter);
    Design::place(platform, 300, 2800, 6600, 400);
}

} // namespace tarvex
