#include "ui/details/DetailsPane.h"

#include "app/errors/Guarded.h"
#include "ui/NotFound.h"
#include "ui/details/NotFoundNotice.h"
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

#include <algorithm>
#include <chrono>
#include <utility>

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
      m_notFound(new NotFoundNotice),
      m_selectedCountLabel(new QLabel),
      m_stars(new StarEditor),
      m_mixedStarsLabel(new QLabel(tr("(mixed)"))),
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
    connect(m_previews, &PreviewLoader::loaded, this, [this](const QImage& image) {
        m_stalePreview->stop();
        m_preview->setImage(image);
        emit filled();
    });
    connect(m_loader, &ProjectLoader::loaded, this, &DetailsPane::showLoaded);
    connect(m_loader, &ProjectLoader::failed, this, &DetailsPane::showUnreadable);
    connect(m_progress, &QSlider::valueChanged, this, &DetailsPane::showProgress);
    connect(m_open, &QPushButton::clicked, this, [this] {
        // Who double-clicks means one opening.
        if (m_openPause.hasExpired())
            emit openRequested();
        m_openPause.setRemainingTime(QApplication::doubleClickInterval());
    });
    connect(m_release, &QPushButton::clicked, this, &DetailsPane::releaseRequested);
    connectProjectEvents();
}

QWidget* DetailsPane::makeNothingSelectedPage() {
    auto* page = new QWidget(this);
    m_nothingText = new QLabel(tr("Select a project to see its details."), page);
    m_nothingText->setObjectName(QStringLiteral("nothingShownLabel"));
    Contrast::makeSecondary(*m_nothingText);
    m_nothingText->setAlignment(Qt::AlignCenter);
    m_nothingText->setWordWrap(true);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(margin);
    layout->addStretch(2);
    auto* emblem = new TracksEmblem(page);
    emblem->setAccented(false);
    layout->addWidget(emblem, 0, Qt::AlignHCenter);
    layout->addWidget(m_nothingText);
    layout->addStretch(3);
    return page;
}

QWidget* DetailsPane::makeProjectPage() {
    m_preview->setObjectName(QStringLiteral("previewImageView"));
    m_stars->setObjectName(QStringLiteral("projectStarEditWidget"));
    m_open->setObjectName(QStringLiteral("openProjectButton"));
    m_release->setObjectName(QStringLiteral("releaseButton"));
    // Outside dialogs only an auto-default button takes the Return key.
    m_open->setAutoDefault(true);
    m_release->setAutoDefault(true);
    m_mixedStarsLabel->setObjectName(QStringLiteral("mixedStarsLabel"));
    m_progressLabel->setObjectName(QStringLiteral("projectProgressLabel"));
    m_progress->setObjectName(QStringLiteral("projectProgressSlider"));
    m_progress->setAccessibleName(tr("Progress"));

    QFont nameFont = m_name->font();
    nameFont.setPointSizeF(nameFont.pointSizeF() * 1.25);
    nameFont.setWeight(QFont::DemiBold);
    m_name->setFont(nameFont);
    for (QLabel* label :
         {static_cast<QLabel*>(m_details), static_cast<QLabel*>(m_path), m_mixedStarsLabel,
          m_selectedCountLabel})
        Contrast::makeSecondary(*label);
    m_path->setElideMode(Qt::ElideMiddle);
    m_name->setTextOrder(TextOrder::OfItsOwn);
    for (ElidedLabel* line : {m_details, m_path})
        line->setTextOrder(TextOrder::LeftToRight);
    m_selectedCountLabel->setWordWrap(true);

    auto* rating = new QHBoxLayout;
    rating->setSpacing(8);
    rating->addWidget(m_stars);
    rating->addWidget(m_mixedStarsLabel);
    rating->addStretch();

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
    layout->addWidget(m_notFound);
    layout->addSpacing(8);
    layout->addLayout(rating);
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

void DetailsPane::selectProjects(const QList<qint64>& projects) {
    QList<qint64> selected = projects;
    // The same selection has the same order, so that it is not loaded again.
    if (!selected.isEmpty())
        std::sort(selected.begin() + 1, selected.end());
    if (std::ranges::equal(selected, m_selected))
        return;
    m_selected = selected;
    qDebug() << "Selected project with ID:" << m_selected.value(0, -1);
    m_loader->load(m_selected);
    if (m_selected.isEmpty())
        showNothing();
}

bool DetailsPane::showsSelection() const {
    return std::ranges::equal(m_shown, m_selected);
}

void DetailsPane::reload() {
    m_loader->load(m_selected);
}

void DetailsPane::retry() {
    if (std::exchange(m_isUnreadable, false))
        reload();
}

void DetailsPane::setMissingProjects(const QSet<qint64>& projects) {
    const bool wasMissing = isMissing();
    m_missing = projects;
    showMissing();
    if (isMissing() == wasMissing)
        return;
    showPreview(m_project);
    emit projectShown(m_project);
}

void DetailsPane::setEntries(const FolderTreeItemModel& entries) {
    m_statuses->setEntries(entries);
}

void DetailsPane::commit() {
    m_progress->commit();
}

void DetailsPane::showLoaded(const ProjectRecord& record, const SelectionSummary& summary) {
    if (!record.isValid()) {
        showNothing();
        emit notAvailable();
        return;
    }
    m_isUnreadable = false;
    if (m_isBeingWritten && showsSelection())
        return;
    m_project = record;
    m_summary = summary;
    m_shown = m_selected;
    showNameAndPlace();
    showMissing();
    showUserData();
    showPreview(record);
    m_pages->setCurrentWidget(m_projectPage);
    emit projectShown(m_project);
}

void DetailsPane::showNameAndPlace() {
    const auto count = m_shown.size();
    m_selectedCountLabel->setVisible(count > 1);
    m_release->setEnabled(count == 1);
    if (count == 1) {
        m_name->setText(m_project.name);
        m_details->setText(m_project.details);
        m_path->setText(m_project.bundlePath);
        return;
    }
    const QString mixed = tr("(mixed)");
    const QString number = locale().toString(count);
    const QStringList details{
        m_summary.tempo ? *m_summary.tempo + QLatin1String(" BPM") : mixed,
        m_summary.timeSignature.value_or(mixed), m_summary.key.value_or(mixed)};
    m_name->setText(tr("%1 projects").arg(number));
    m_details->setText(details.count(mixed) == details.size() ? mixed : details.join(QLatin1String(" - ")));
    m_path->setText(m_summary.folder.value_or(mixed));
    m_selectedCountLabel->setText(
        tr("%1 projects are selected. What you change here changes all of them.").arg(number));
}

void DetailsPane::showUserData() {
    disconnectProjectEvents();
    m_stars->setStarRating(StarRating(m_summary.stars.value_or(0), 5));
    m_stars->setAccessibleDescription(m_summary.stars ? QString() : m_mixedStarsLabel->text());
    m_mixedStarsLabel->setVisible(!m_summary.stars);
    // Where they differ, the handle rests where the current project's would.
    m_progress->setStoredValue(m_project.progressPercent, !m_summary.progressPercent);
    m_progress->setAccessibleDescription(m_summary.progressPercent ? QString() : tr("(mixed)"));
    if (m_summary.progressPercent || m_progress->value() != m_project.progressPercent)
        showProgress(m_progress->value());
    else
        showProgressText(tr("(mixed)"));
    m_statuses->setStatuses(m_summary.statuses);
    connectProjectEvents();
}

void DetailsPane::showMissing() {
    const auto missing = std::count_if(
        m_shown.begin(), m_shown.end(), [this](qint64 project) { return m_missing.contains(project); });
    m_notFound->present(static_cast<int>(missing), static_cast<int>(m_shown.size()));
    m_open->setEnabled(!isMissing());
    m_open->setToolTip(isMissing() ? NotFound::reason() : QString());
    m_open->setAccessibleDescription(m_open->toolTip());
}

void DetailsPane::showPreview(const ProjectRecord& record) {
    if (m_shown.size() > 1) {
        clearPreview();
        // Not "No picture": each may have one.
        m_preview->setImage({}, m_name->text());
        emit filled();
        return;
    }
    if (isMissing()) {
        clearPreview();
        m_preview->setImage({}, NotFound::text());
        emit filled();
        return;
    }
    const QString key = QString::number(record.lastModified) + record.bundlePath;
    if (key == m_previewKey)
        return;
    m_previewKey = key;
    m_stalePreview->start();
    m_previews->load(record.bundlePath, previewSize * devicePixelRatioF());
}

void DetailsPane::clearPreview() {
    m_previewKey.clear();
    m_stalePreview->stop();
    m_previews->cancel();
    m_preview->clear();
}

void DetailsPane::showUnreadable() {
    showNothing();
    m_isUnreadable = true;
    m_nothingText->setText(tr("The details could not be read. Click the project to try again."));
    emit notAvailable();
}

void DetailsPane::showNothing() {
    m_isUnreadable = false;
    m_nothingText->setText(tr("Select a project to see its details."));
    m_project = {};
    m_summary = {};
    m_shown.clear();
    clearPreview();
    m_pages->setCurrentIndex(0);
    emit projectShown(m_project);
}

void DetailsPane::showProgress(int percent) {
    showProgressText(tr("%1%").arg(percent));
}

void DetailsPane::showProgressText(const QString& progress) {
    m_progressLabel->setText(tr("Progress: ") + progress);
}

void DetailsPane::progressEditedTo(int percent) {
    if (!m_project.isValid()) {
        m_progressLabel->clear();
        m_progress->setStoredValue(0);
        return;
    }
    emit progressEdited(percent);
}

void DetailsPane::connectProjectEvents() {
    if (!m_projectEvents.isEmpty())
        return;
    m_projectEvents = {
        connect(
            m_stars, &StarEditor::editingFinished, this,
            [this] { emit starRatingEdited(m_stars->starRating().starCount()); }),
        connect(
            m_progress, &ProgressSlider::edited, this,
            [this](int percent) {
                Stemhaven::guarded(
                    tr("Setting project progress failed."), [&] { progressEditedTo(percent); });
            }),
        connect(m_statuses, &StatusFields::edited, this, &DetailsPane::statusEdited)};
}

void DetailsPane::disconnectProjectEvents() {
    for (const auto& connection : std::as_const(m_projectEvents))
        disconnect(connection);
    m_projectEvents.clear();
}
