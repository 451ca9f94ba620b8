#include "padded_item_delegate.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOptionHeader>
#include <algorithm>

namespace qor {

void PaddedItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                               const QModelIndex &index) const
{
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    const QString text = item.text;
    item.text.clear();
    const QWidget *widget = item.widget;
    QStyle *style = widget != nullptr ? widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, widget);

    const QRect area = item.rect.adjusted(Padding, 0, -Padding, 0);
    const QPalette::ColorGroup group =
        (item.state & QStyle::State_Enabled)
            ? ((item.state & QStyle::State_Active) ? QPalette::Active : QPalette::Inactive)
            : QPalette::Disabled;
    const QPalette::ColorRole role =
        (item.state & QStyle::State_Selected) ? QPalette::HighlightedText : QPalette::Text;
    painter->save();
    painter->setFont(item.font);
    painter->setPen(item.palette.color(group, role));
    painter->drawText(area, static_cast<int>(item.displayAlignment),
                      item.fontMetrics.elidedText(text, Qt::ElideRight, area.width()));
    painter->restore();
}

void PaddedHeaderStyle::drawControl(ControlElement element, const QStyleOption *option,
                                    QPainter *painter, const QWidget *widget) const
{
    const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option);
    if (element == CE_HeaderLabel && header != nullptr) {
        // The label's rectangle already lies inside the style's margin.
        const int inset =
            std::max(0, PaddedItemDelegate::Padding - pixelMetric(PM_HeaderMargin, option, widget));
        QStyleOptionHeader label(*header);
        label.rect.adjust(inset, 0, -inset, 0);
        QProxyStyle::drawControl(element, &label, painter, widget);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

} // namespace qor
