#pragma once

#include <QProxyStyle>
#include <QStyledItemDelegate>

namespace qor {

// Draws cells with more room between a cell's text and its neighbours than
// the style gives, so that a right-aligned number and the left-aligned text
// of the next column do not run together.
class PaddedItemDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    static constexpr int Padding = 6; // pixels on either side of the text

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};

// The header's half of the same: heading texts keep the cells' distance from
// the section edges, so that a heading stands over its column's text.
class PaddedHeaderStyle final : public QProxyStyle
{
    Q_OBJECT

public:
    using QProxyStyle::QProxyStyle;

    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
};

} // namespace qor
