#include "tool_list_model.h"

#include <QFont>
#include <QMimeData>
#include <QTimer>
#include <utility>

namespace qor {

namespace {

Qt::Alignment ColumnAlignment(int column)
{
    return (IsNumberColumn(static_cast<ListColumn>(column)) ? Qt::AlignRight : Qt::AlignLeft) |
           Qt::AlignVCenter;
}

} // namespace

bool ToolListModel::Fill(const Workspace &workspace, ToolListContents &contents)
{
    beginResetModel();
    m_rows = &contents.Rows;
    const bool filled = FillToolList(workspace, contents);
    endResetModel();
    return filled;
}

void ToolListModel::SetHeadings(QStringList headings)
{
    m_headings = std::move(headings);
    emit headerDataChanged(Qt::Horizontal, 0, ListColumnCount - 1);
}

int ToolListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || m_rows == nullptr ? 0 : m_rows->RowCount();
}

int ToolListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ListColumnCount;
}

QVariant ToolListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || m_rows == nullptr) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return QString::fromStdString(
            m_rows->Cell(index.row(), static_cast<ListColumn>(index.column())));
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(ColumnAlignment(index.column()));
    case Qt::FontRole:
        return index.row() == m_marked ? QVariant(m_markedFont) : QVariant();
    default:
        return {};
    }
}

void ToolListModel::SetMarkedRow(int row, const QFont &listFont)
{
    m_markedFont = listFont;
    m_markedFont.setItalic(true);
    const int before = std::exchange(m_marked, row);
    for (int changed : {before, row}) {
        if (changed >= 0 && changed < rowCount()) {
            emit dataChanged(index(changed, 0), index(changed, ListColumnCount - 1),
                             {Qt::FontRole});
        }
    }
}

QVariant ToolListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ListColumnCount) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return section < m_headings.size() ? m_headings[section] : QString();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(ColumnAlignment(section));
    default:
        return {};
    }
}

Qt::ItemFlags ToolListModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid()) {
        flags |= Qt::ItemIsDropEnabled;
        if (m_rows != nullptr && m_rows->HasTool(index.row())) {
            flags |= Qt::ItemIsDragEnabled;
        }
    }
    return flags;
}

Qt::DropActions ToolListModel::supportedDragActions() const
{
    return Qt::MoveAction | Qt::CopyAction;
}

Qt::DropActions ToolListModel::supportedDropActions() const
{
    return Qt::MoveAction | Qt::CopyAction;
}

QStringList ToolListModel::mimeTypes() const
{
    return {RowMimeType};
}

QMimeData *ToolListModel::mimeData(const QModelIndexList &indexes) const
{
    if (indexes.isEmpty()) {
        return nullptr;
    }
    auto *data = new QMimeData;
    data->setData(RowMimeType, QByteArray::number(indexes.constFirst().row()));
    return data;
}

int ToolListModel::DraggedRow(const QMimeData *data) const
{
    if (data == nullptr || !data->hasFormat(RowMimeType)) {
        return -1;
    }
    bool ok = false;
    const int row = data->data(RowMimeType).toInt(&ok);
    return ok && row >= 0 && row < rowCount() ? row : -1;
}

bool ToolListModel::canDropMimeData(const QMimeData *data, Qt::DropAction action, int, int,
                                    const QModelIndex &parent) const
{
    // Only onto a row: between rows there is no position to take the tool.
    const int from = DraggedRow(data);
    return (action == Qt::MoveAction || action == Qt::CopyAction) && from >= 0 &&
           parent.isValid() && parent.row() != from;
}

bool ToolListModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                                 const QModelIndex &parent)
{
    if (!canDropMimeData(data, action, row, column, parent)) {
        return false;
    }
    const int from = DraggedRow(data);
    const int to = parent.row();
    // After the drag has ended: the question it may raise must not run
    // inside the drag's own event loop. The drop is reported as not taken,
    // so that the view removes nothing itself.
    QTimer::singleShot(0, this, [this, from, to, action] {
        emit dropRequested(from, to, action == Qt::CopyAction);
    });
    return false;
}

} // namespace qor
