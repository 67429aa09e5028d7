#pragma once

#include <QComboBox>

namespace tarvex {

/// A drop-down list of items written "symbol - description" (the alleles of a gene): closed,
/// it shows the symbol alone, as the genotype is written; its pop-up shows every item whole
/// and is as wide as its widest item. Its tip is the whole item chosen.
class SymbolList : public QComboBox
{
public:
    explicit SymbolList(QWidget *parent = nullptr);

    /// The text the closed list shows: the chosen item's symbol (an item with no
    /// description shows whole).
    QString shownText() const;
    /// The symbol of an item.
    static QString symbolOf(const QString &item);

    void showPopup() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;
};

} // namespace tarvex
