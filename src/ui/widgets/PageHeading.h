#pragma once

#include <QWidget>

/// What a page of a dialog begins with: its title, and below it what it is for. Both are shown as they are.
class PageHeading : public QWidget {
    Q_OBJECT

public:
    explicit PageHeading(const QString& title, const QString& introduction = {}, QWidget* parent = nullptr);
};
