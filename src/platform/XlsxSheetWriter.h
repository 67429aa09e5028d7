#pragma once

#include "reporting/SheetWriter.h"

struct lxw_workbook;
struct lxw_worksheet;
struct lxw_format;

namespace tarvex {

/// A sheet saved as an .xlsx workbook that any spreadsheet program opens. The workbook is
/// written beside the target under a passing name and put in its place only when whole,
/// so a failure (a read-only folder, a full disk) leaves an earlier file of that name as it
/// was and nothing else behind.
class XlsxSheetWriter : public SheetWriter
{
public:
    XlsxSheetWriter() = default;
    /// A workbook never closed is dropped, with its part-written file.
    ~XlsxSheetWriter() override;
    XlsxSheetWriter(const XlsxSheetWriter &) = delete;
    XlsxSheetWriter &operator=(const XlsxSheetWriter &) = delete;

    std::optional<QString> open(const QString &path) override;
    void write(int row, int column, const QString &text, Style style) override;
    void setColumnWidth(int column, double width) override;
    std::optional<QString> close() override;

private:
    QString failure(const QString &reason) const;
    void abandon();

    lxw_workbook *m_book = nullptr;
    lxw_worksheet *m_sheet = nullptr;
    lxw_format *m_title = nullptr;
    lxw_format *m_heading = nullptr;
    QString m_path;
    QString m_partial;
    // The first write that failed; the workbook is then not saved.
    std::optional<QString> m_fault;
};

} // namespace tarvex
