#include "tool_list_proxy.h"

#include "row_order.h"
#include "tool_list_rows.h"

namespace qor {

ToolListProxy::ToolListProxy(QObject *parent) : QSortFilterProxyModel(parent)
{
    // Rows are sorted and filtered when asked, not behind the user's back
    // while the source changes a row.
    setDynamicSortFilter(false);
}

void ToolListProxy::SetQuery(const QString &query)
{
    m_filter = RowFilter(query.toStdString());
    Refilter();
}

void ToolListProxy::Refilter()
{
    Match();
    invalidateFilter();
    if (sortColumn() >= 0) {
        sort(sortColumn(), sortOrder());
    }
}

void ToolListProxy::Match()
{
    m_matches.clear();
    if (m_rows != nullptr && !m_filter.Empty()) {
        m_matches = m_filter.MatchAll(*m_rows);
    }
}

void ToolListProxy::CycleSort(int column)
{
    if (column != sortColumn()) {
        sort(column, Qt::AscendingOrder);
    } else if (sortOrder() == Qt::AscendingOrder) {
        sort(column, Qt::DescendingOrder);
    } else {
        sort(-1); // magazine order
    }
}

int ToolListProxy::ProxyRow(int sourceRow) const
{
    if (sourceModel() == nullptr || sourceRow < 0) {
        return -1;
    }
    return mapFromSource(sourceModel()->index(sourceRow, 0)).row();
}

int ToolListProxy::SourceRow(int proxyRow) const
{
    if (proxyRow < 0 || proxyRow >= rowCount()) {
        return -1;
    }
    return mapToSource(index(proxyRow, 0)).row();
}

bool ToolListProxy::filterAcceptsRow(int sourceRow, const QModelIndex &) const
{
    if (m_filter.Empty()) {
        return true;
    }
    return sourceRow >= 0 && static_cast<std::size_t>(sourceRow) < m_matches.size() &&
           m_matches[static_cast<std::size_t>(sourceRow)];
}

bool ToolListProxy::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    if (m_rows == nullptr) {
        return left.row() < right.row();
    }
    const auto column = static_cast<ListColumn>(left.column());
    // The view turns the order round for a descending sort; the rows without
    // a value stay last because RowBefore is asked the other way round.
    if (sortOrder() == Qt::DescendingOrder) {
        return RowBefore(*m_rows, right.row(), left.row(), column, true);
    }
    return RowBefore(*m_rows, left.row(), right.row(), column, false);
}

} // namespace qor
