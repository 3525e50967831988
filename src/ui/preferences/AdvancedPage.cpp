#include "ui/preferences/AdvancedPage.h"

#include "app/SettingsKeys.h"
#include "app/errors/Guarded.h"
#include "app/logging/Log.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/PageHeading.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QSettings>
#include <QVBoxLayout>

namespace SettingsKeys = Stemhaven::SettingsKeys;

namespace {

void setLogLevel(int index) {
    const auto level = static_cast<QtMsgType>(index);
    QSettings().setValue(SettingsKeys::logLevel, index);
    Logging::Log::setLevel(level);
    qInfo() << "Log level set to: " << level;
}

} // namespace

AdvancedPage::AdvancedPage(QWidget* parent) : QWidget(parent), m_logLevel(new QComboBox(this)) {
    m_logLevel->setObjectName(QStringLiteral("logLevelCombo"));
    // In the order of the message types' numbers.
    m_logLevel->addItems({tr("Debug"), tr("Warning"), tr("Critical"), tr("Fatal"), tr("Info")});
    m_logLevel->setCurrentIndex(QSettings().value(SettingsKeys::logLevel, QtCriticalMsg).toInt());

    auto* label = new QLabel(tr("&Log Level:"));
    label->setBuddy(m_logLevel);
    auto* meaning =
        new QLabel(tr("The log holds messages of this level and of those that follow it in the list."));
    meaning->setWordWrap(true);
    Contrast::makeSecondary(*meaning);
    auto* place = new ElidedLabel;
    place->setElideMode(Qt::ElideMiddle);
    place->setText(tr("It is kept in %1").arg(QDir::toNativeSeparators(Logging::Log::filepath())));
    Contrast::makeSecondary(*place);

    auto* line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(m_logLevel);
    line->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new PageHeading(tr("Advanced")));
    layout->addLayout(line);
    layout->addWidget(meaning);
    layout->addWidget(place);
    layout->addStretch();
    setFocusProxy(m_logLevel);
    connect(m_logLevel, &QComboBox::currentIndexChanged, this, [](int index) {
        Stemhaven::guarded(tr("Could not set log level"), [&] { setLogLevel(index); });
    });
}
