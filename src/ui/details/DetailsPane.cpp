#include "ui/details/DetailsPane.h"

#include "app/errors/Guarded.h"
#include "ui/details/PreviewLoader.h"
#include "ui/details/ProgressSlider.h"
#include "ui/details/ProjectLoader.h"
#include "ui/details/StatusFields.h"
#include "ui/table/StarEditor.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/ImageView.h"
#include "ui/widgets/TracksEmblem.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedLayout>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include <chrono>

namespace {

constexpr int margin = 16;
constexpr QSize previewSize{640, 400}; // in points; more than the pane is usually wide

/// A picture that takes longer than this gives way to the stand-in meanwhile.
constexpr std::chrono::milliseconds staleAfter{150};

ElidedLabel* makeLine(const char* objectName, const QString& placeholder, QWidget* parent) {
    auto* label = new ElidedLabel(parent);
    label->setObjectName(QLatin1String(objectName));
    label->setText(placeholder);
    return label;
}

} // namespace

DetailsPane::DetailsPane(Stemhaven::TaskManager& tasks, QWidget* parent)
    : QWidget(parent),
      m_loader(new ProjectLoader(tasks, this)),
      m_previews(new PreviewLoader(this)),
      m_stalePreview(new QTimer(this)),
      m_preview(new ImageView),
      m_name(makeLine("projectNameLabel", tr("Project Name"), nullptr)),
      m_details(makeLine("projectDetailsLabel", tr("98 BPM | 4/4 | Cmajor"), nullptr)),
      m_path(makeLine("projectFilepathLabel", tr("/path/to/project"), nullptr)),
      m_selectedCountLabel(new QLabel),
      m_stars(new StarEditor),
      m_open(new QPushButton(tr("Open"))),
      m_release(new QPushButton(tr("Release"))),
      m_progressLabel(new QLabel(tr("Progress: 50%"))),
      m_progress(new ProgressSlider),
      m_statuses(new StatusFields),
      m_projectPage(makeProjectPage()),
      m_pages(new QStackedLayout(this)) {
    setAccessibleName(tr("Project Details"));
    m_pages->addWidget(makeNothingSelectedPage());
    m_pages->addWidget(m_projectPage);

    m_stalePreview->setSingleShot(true);
    m_stalePreview->setInterval(staleAfter);
    connect(m_stalePreview, &QTimer::timeout, m_preview, &ImageView::clear);
    connect(m_previews, &PreviewLoader::loaded, this, [this](const QImage& image, bool isThere) {
        m_stalePreview->stop();
        m_preview->setImage(image, isThere ? QString() : tr("Project wasn't found"));
        emit filled();
    });
    connect(m_loader, &ProjectLoader::loaded, this, &DetailsPane::showProject);
    connect(m_progress, &QSlider::valueChanged, this, &DetailsPane::showProgress);
    connect(m_open, &QPushButton::clicked, this, [this] {
        // Who double-clicks means one opening.
        if (m_openPause.hasExpired())
            emit openRequested();
        m_openPause.setRemainingTime(QApplication::doubleClickInterval());
    });
    connectProjectEvents();
}

QWidget* DetailsPane::makeNothingSelectedPage() {
    auto* page = new QWidget(this);
    auto* text = new QLabel(tr("Select a project to see its details."), page);
    Contrast::makeSecondary(*text);
    text->setAlignment(Qt::AlignCenter);
    text->setWordWrap(true);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(margin);
    layout->addStretch(2);
    auto* emblem = new TracksEmblem(page);
    emblem->setAccented(false);
    layout->addWidget(emblem, 0, Qt::AlignHCenter);
    layout->addWidget(text);
    layout->addStretch(3);
    return page;
}

QWidget* DetailsPane::makeProjectPage() {
    m_preview->setObjectName(QStringLiteral("previewImageView"));
    m_stars->setObjectName(QStringLiteral("projectStarEditWidget"));
    m_open->setObjectName(QStringLiteral("openProjectButton"));
    m_release->setObjectName(QStringLiteral("releaseButton"));
    m_release->setEnabled(false);
    // Outside dialogs only an auto-default button takes the Return key.
    m_open->setAutoDefault(true);
    m_release->setAutoDefault(true);
    m_progressLabel->setObjectName(QStringLiteral("projectProgressLabel"));
    m_progress->setObjectName(QStringLiteral("projectProgressSlider"));
    m_progress->setAccessibleName(tr("Progress"));

    QFont nameFont = m_name->font();
    nameFont.setPointSizeF(nameFont.pointSizeF() * 1.25);
    nameFont.setWeight(QFont::DemiBold);
    m_name->setFont(nameFont);
    for (QLabel* label :
         {static_cast<QLabel*>(m_details), static_cast<QLabel*>(m_path), m_selectedCountLabel})
        Contrast::makeSecondary(*label);
    m_path->setElideMode(Qt::ElideMiddle);
    m_name->setTextOrder(TextOrder::OfItsOwn);
    for (ElidedLabel* line : {m_details, m_path})
        line->setTextOrder(TextOrder::LeftToRight);
    m_selectedCountLabel->setWordWrap(true);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_open, 1);
    buttons->addWidget(m_release, 1);

    auto* fields = new QWidget;
    auto* layout = new QVBoxLayout(fields);
    layout->setContentsMargins(margin, 12, margin, margin);
    layout->setSpacing(4);
    layout->addWidget(m_preview);
    layout->addSpacing(12);
    layout->addWidget(m_name);
    layout->addWidget(m_details);
    layout->addWidget(m_path);
    layout->addSpacing(8);
    layout->addWidget(m_stars, 0, Qt::AlignLeading);
    layout->addSpacing(8);
    layout->addLayout(buttons);
    layout->addSpacing(12);
    layout->addWidget(m_progressLabel);
    layout->addWidget(m_progress);
    layout->addSpacing(12);
    layout->addWidget(m_statuses);
    layout->addSpacing(12);
    layout->addWidget(m_selectedCountLabel);
    layout->addStretch();

    auto* page = new QScrollArea(this);
    page->setFrameShape(QFrame::NoFrame);
    page->setWidgetResizable(true);
    page->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    page->setFocusPolicy(Qt::NoFocus);
    page->setWidget(fields);
    page->setMinimumWidth(
        fields->minimumSizeHint().width() + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    return page;
}

void DetailsPane::selectProject(qint64 projectId, int selectedCount) {
    m_selectedCount = selectedCount;
    showSelectedCount();
    if (projectId == m_selectedId)
        return;
    qDebug() << "Selected project with ID:" << projectId;
    m_selectedId = projectId;
    m_loader->load(projectId);
    if (projectId < 0)
        showNothing();
}

void DetailsPane::reload() {
    m_loader->load(m_selectedId);
}

void DetailsPane::reloadPicture() {
    m_previewKey.clear();
    reload();
}

void DetailsPane::setEntries(const FolderTreeItemModel& entries) {
    m_statuses->setEntries(entries);
}

void DetailsPane::commit() {
    m_progress->commit();
}

void DetailsPane::showProject(const ProjectRecord& record) {
    if (!record.isValid()) {
        showNothing();
        return;
    }
    if (m_isBeingWritten && record.id == m_project.id)
        return;
    m_project = record;
    disconnectProjectEvents();
    m_name->setText(record.name);
    m_details->setText(record.details);
    m_path->setText(record.bundlePath);
    m_stars->setStarRating(StarRating(record.stars, 5));
    m_progress->setStoredValue(record.progressPercent);
    showProgress(m_progress->value());
    m_statuses->setStatuses(record.statuses);
    connectProjectEvents();
    showPreview(record);
    m_pages->setCurrentWidget(m_projectPage);
    emit projectShown(m_project);
}

void DetailsPane::showPreview(const ProjectRecord& record) {
    const QString key = QString::number(record.lastModified) + record.bundlePath;
    if (key == m_previewKey)
        return;
    m_previewKey = key;
    m_stalePreview->start();
    m_previews->load(record.bundlePath, previewSize * devicePixelRatioF());
}

void DetailsPane::showNothing() {
    m_project = {};
    m_previewKey.clear();
    m_previews->cancel();
    m_preview->clear();
    m_pages->setCurrentIndex(0);
    emit projectShown(m_project);
}

void DetailsPane::showSelectedCount() {
    m_selectedCountLabel->setVisible(m_selectedCount > 1);
    m_selectedCountLabel->setText(tr("%1 projects are selected. What you change here changes all of them.")
                                      .arg(locale().toString(m_selectedCount)));
}

void DetailsPane::showProgress(int percent) {
    m_progressLabel->setText(tr("Progress: ") + tr("%1%").arg(percent));
}

void DetailsPane::progressSliderChanged() {
    if (!m_project.isValid()) {
        m_progressLabel->clear();
        m_progress->setStoredValue(0);
        return;
    }
    emit progressEdited(m_progress->value());
}

void DetailsPane::connectProjectEvents() {
    if (!m_projectEvents.isEmpty())
        return;
    m_projectEvents = {
        connect(
            m_stars, &StarEditor::editingFinished, this,
            [this] { emit starRatingEdited(m_stars->starRating().starCount()); }),
        connect(
            m_progress, &QSlider::sliderReleased, this,
            [this] {
                Stemhaven::guarded(
                    tr("Setting project progress failed."), [this] { progressSliderChanged(); });
            }),
        connect(m_statuses, &StatusFields::edited, this, &DetailsPane::statusEdited)};
}

void DetailsPane::disconnectProjectEvents() {
    for (const auto& connection : std::as_const(m_projectEvents))
        disconnect(connection);
    m_projectEvents.clear();
}
