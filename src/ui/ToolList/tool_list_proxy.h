#pragma once

#include "row_filter.h"

#include <QSortFilterProxyModel>
#include <vector>

namespace qor {

class ToolListRows;

// The list as the user looks at it: only the rows the find box matches, in
// magazine order or sorted by a column. It never moves a tool; row numbers
// of the source model stay magazine numbers.
class ToolListProxy final : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit ToolListProxy(QObject *parent = nullptr);

    // The rows the source model shows; matched again on the next SetQuery
    // or Refilter.
    void SetRows(const ToolListRows *rows) { m_rows = rows; }

    // Shows only the rows that match `query` (everything for an empty one).
    void SetQuery(const QString &query);
    bool Filtering() const { return !m_filter.Empty(); }

    // Matches every row again after the rows changed.
    void Refilter();

    // The header's click cycle: a new column sorts ascending, the same column
    // then descending, and a third click goes back to magazine order.
    void CycleSort(int column);

    // The proxy row of a source row, -1 when the filter hides it, and back.
    int ProxyRow(int sourceRow) const;
    int SourceRow(int proxyRow) const;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

private:
    void Match();

    const ToolListRows *m_rows = nullptr;
    RowFilter m_filter;
    std::vector<bool> m_matches; // by source row, while filtering
};

} // namespace qor
