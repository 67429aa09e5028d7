#pragma once

#include <QDialog>

namespace tarvex {

/// "About Tarvex Livestock Management System".
class fmAbout : public QDialog
{
public:
    explicit fmAbout(QWidget *parent = nullptr);
};

} // namespace tarvex
