#pragma once

#include "tool_list_rows.h"

#include <QAbstractTableModel>
#include <QFont>
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
    // The row that Cut or Copy marked is shown in the italic form of the
    // list's font; -1 for none.
    void SetMarkedRow(int row, const QFont &listFont);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    // Dragging a row onto another moves (or, with Ctrl, copies) its tool
    // there. The model changes nothing itself: it says what was asked.
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    Qt::DropActions supportedDragActions() const override;
    Qt::DropActions supportedDropActions() const override;
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

    // The type of a dragged row: its row number as text.
    static constexpr const char *RowMimeType = "application/x-qortool-magazine-row";

signals:
    // A row was dropped onto `to` (both rows of this model).
    void dropRequested(int from, int to, bool copy);

private:
    // The dragged row, when the data is one of ours for a row of this list.
    int DraggedRow(const QMimeData *data) const;

    const ToolListRows *m_rows = nullptr;
    QStringList m_headings;
    int m_marked = -1;
    QFont m_markedFont;
};

} // namespace qor
