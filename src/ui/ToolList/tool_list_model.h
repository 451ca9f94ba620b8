#pragma once

#include "tool_list_rows.h"

#include <QAbstractTableModel>
#include <QStringList>

namespace qor {

// The tool list's rows for a QTableView. It reads the rows the list was last
// filled with; cell texts are made only for the cells the view asks for.
class ToolListModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit ToolListModel(QObject *parent = nullptr) : QAbstractTableModel(parent) {}

    // Fills the list from the workspace; false when FillToolList left it as
    // it was.
    bool Fill(const Workspace &workspace, ToolListContents &contents);

    void SetRows(const ToolListRows *rows) { m_rows = rows; }
    void SetHeadings(QStringList headings);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    const ToolListRows *m_rows = nullptr;
    QStringList m_headings;
};

} // namespace qor
