#include "ui/widgets/PageHeading.h"

#include "ui/widgets/Contrast.h"

#include <QLabel>
#include <QVBoxLayout>

PageHeading::PageHeading(const QString& title, const QString& introduction, QWidget* parent)
    : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(4);
    auto* titleLabel = new QLabel(title);
    titleLabel->setTextFormat(Qt::PlainText);
    QFont titleFont = font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.25);
    titleFont.setWeight(QFont::DemiBold);
    titleLabel->setFont(titleFont);
    layout->addWidget(titleLabel);
    if (introduction.isEmpty())
        return;
    auto* introductionLabel = new QLabel(introduction);
    introductionLabel->setTextFormat(Qt::PlainText);
    introductionLabel->setWordWrap(true);
    Contrast::makeSecondary(*introductionLabel);
    layout->addWidget(introductionLabel);
}
