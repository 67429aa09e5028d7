#pragma once

#include "core/Session.h"

#include <QDialog>

namespace tarvex {

/// Every colour that the genetics files define, with its genotype.
class FmListColours : public QDialog
{
public:
    FmListColours(const Session &session, QWidget *parent = nullptr);
};

} // namespace tarvex
