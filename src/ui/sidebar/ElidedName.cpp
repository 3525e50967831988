#include "ui/sidebar/ElidedName.h"

#include <QFontMetrics>

namespace {

constexpr int widest = 200;

} // namespace

QString elidedName(const QString& name, const QFontMetrics& metrics) {
    return metrics.elidedText(QString(name).replace(u'\n', u' '), Qt::ElideMiddle, widest);
}
