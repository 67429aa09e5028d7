#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "reporting/HutchLabels.h"
#include "ui/AnimalListModel.h"

#include <QDialog>

#include <array>
#include <functional>
#include <optional>

class QCheckBox;
class QComboBox;
class QFrame;
class QListView;
class QListWidget;
class QPagedPaintDevice;

namespace tarvex {

/// The stud's animals with a tick box each, for picking whose labels print. The ticks are
/// kept by number, so ticking all of a million animals costs nothing.
class LabelStockModel : public AnimalListModel
{
public:
    LabelStockModel(Database &db, QList<qint64> numbers, QObject *parent = nullptr);

    /// Ticks every animal, or none.
    void setAllTicked(bool on);
    /// The animals ticked, in the list's order.
    QList<qint64> picked() const { return m_ticks.picked(m_numbers); }

    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

private:
    QList<qint64> m_numbers;
    LabelTicks m_ticks;
};

/// Hutch labels: the animals to print labels for, the details on a label, the label size
/// and a print colour for each sex.
class FmLabels : public QDialog
{
public:
    FmLabels(Session &session, Prompts &prompts, QWidget *parent = nullptr);

    /// Draws the labels of the animals ticked on a printer or a PDF file, turned the way the
    /// size chosen prints; false when no label was printed.
    bool printLabels(QPagedPaintDevice *device);

    /// The colour dialog, titled "Select Color" and preset with the swatch's colour: the
    /// colour chosen as 0xBBGGRR, nothing when cancelled. Tests replace it; an empty
    /// function restores the system's dialog.
    using ColourChooser = std::function<std::optional<int>(QWidget *parent, int current)>;
    static void setColourChooser(ColourChooser chooser);

private:
    void ChkAllStock_Click();
    void ChkIncludeAll_Click();
    void CmdPrtCol_Click(int sex);
    void CmdPrint_Click();
    /// The choices on screen.
    LabelOptions chosen() const;
    void showColour(int sex, int colour);

    Session &m_session;
    Prompts &m_prompts;
    QStringList m_items;
    std::array<int, 2> m_colours{};

    LabelStockModel *m_stock;
    QListView *LstStock;
    QCheckBox *ChkAllStock;
    QListWidget *LstInclude;
    QCheckBox *ChkIncludeAll;
    QComboBox *CmbLabSize;
    std::array<QFrame *, 2> PbPrtCol{};
};

} // namespace tarvex
