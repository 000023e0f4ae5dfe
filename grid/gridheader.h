#pragma once

#include <QHeaderView>

/// Column headers whose texts have several lines and wrap where a column is narrow.
class GridHeader : public QHeaderView
{
    Q_OBJECT

public:
    explicit GridHeader(QWidget *parent = nullptr);

protected:
    QSize sectionSizeFromContents(int logicalIndex) const override;
};
