#pragma once

#include <QWidget>

namespace tarvex {

/// The splash shown while the program starts and opens its stud.
class fmSplash : public QWidget
{
public:
    fmSplash();
    static QString versionLine();
    static QString platformLine();
};


} // namespace tarvex
