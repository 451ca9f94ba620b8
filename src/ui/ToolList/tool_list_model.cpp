#include "tool_list_model.h"

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
    default:
        return {};
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

} // namespace qor
