#include "ui/table/EmptyState.h"

#include "ui/widgets/Contrast.h"
#include "ui/widgets/TracksEmblem.h"

#include <QDir>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int widestText = 320;
constexpr int narrowestText = 160;
constexpr int longestTerm = 60;
constexpr qsizetype mostFolders = 3;

QLabel* makeLabel() {
    auto* label = new QLabel;
    // A term may look like markup.
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setFixedWidth(widestText);
    return label;
}

QString shortened(const QString& term) {
    return term.size() <= longestTerm ? term : term.left(longestTerm) + QStringLiteral("…");
}

/// A path, which otherwise has nowhere to wrap.
QString breakable(QString path) {
    return path.replace(u'/', QStringLiteral("/\u200b"));
}

} // namespace

EmptyState::EmptyState(QWidget* parent)
    : QScrollArea(parent),
      m_emblem(new TracksEmblem),
      m_title(makeLabel()),
      m_help(makeLabel()),
      m_action(new QPushButton) {
    QFont titleFont = font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.4);
    titleFont.setWeight(QFont::DemiBold);
    m_title->setFont(titleFont);
    Contrast::makeSecondary(*m_help);
    m_action->setDefault(true);

    // A column of its own width, in which the texts get the height that they wrap to.
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    column->addStretch(2);
    column->addWidget(m_emblem, 0, Qt::AlignHCenter);
    column->addSpacing(24);
    column->addWidget(m_title);
    column->addSpacing(8);
    column->addWidget(m_help);
    column->addSpacing(24);
    column->addWidget(m_action, 0, Qt::AlignHCenter);
    column->addStretch(3);
    auto* contents = new QWidget;
    auto* layout = new QHBoxLayout(contents);
    layout->addStretch();
    layout->addLayout(column);
    layout->addStretch();
    setWidget(contents);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setBackgroundRole(QPalette::Base);

    setFocusProxy(m_action);
    connect(m_action, &QPushButton::clicked, this, &EmptyState::performAction);
    present(m_reason);
}

void EmptyState::resizeEvent(QResizeEvent* event) {
    const QMargins around = widget()->layout()->contentsMargins();
    const int room = viewport()->width() - around.left() - around.right();
    for (QLabel* label : {m_title, m_help})
        label->setFixedWidth(std::clamp(room, narrowestText, widestText));
    QScrollArea::resizeEvent(event);
}

void EmptyState::present(Reason reason, const QString& name) {
    m_reason = reason;
    m_emblem->setAccented(reason == Reason::NoProjects || reason == Reason::Searching);
    switch (reason) {
    case Reason::NoProjects:
        setTexts(
            tr("No projects yet"),
            tr("Choose the folder where you keep your Logic projects, or drop it here."), tr("Add Folder…"));
        break;
    case Reason::Searching:
        setTexts(
            tr("Looking for projects…"), tr("They appear here while your folders are being looked through."),
            tr("Add Folder…"));
        break;
    case Reason::AllHidden:
        setTexts(
            tr("All projects are hidden"), tr("Completed and ignored projects are not shown at the moment."),
            tr("Show Hidden Projects"));
        break;
    case Reason::MatchesHidden:
        setTexts(
            name, tr("Completed and ignored projects are not shown at the moment."),
            tr("Show Hidden Projects"));
        break;
    case Reason::NothingFound:
        setTexts(
            tr("Nothing found"), tr("No project matches “%1”.").arg(shortened(name)), tr("Clear Search"));
        break;
    case Reason::NothingInFilter:
        setTexts(
            tr("Nothing here yet"),
            tr("No project that is shown belongs to “%1”. Right-click a project to file it.")
                .arg(shortened(name)),
            tr("Show All Projects"));
        break;
    case Reason::NoColumns:
        setTexts(
            tr("All columns are hidden"),
            tr("The table has nothing to show of your projects, and a search looks at nothing."),
            tr("Show the Names"));
        break;
    case Reason::Unreadable:
        setTexts(
            tr("Your projects could not be read"),
            tr("Another program may be using the catalogue, or may have spoilt it. Close the other program "
               "and "
               "try again. If that does not help, quit Stemhaven and start it again: it then checks the "
               "catalogue and says what to do. The log says more:\n%1")
                .arg(breakable(name)),
            tr("Try Again"));
        break;
    }
}

void EmptyState::presentHidden(int projects) {
    present(
        Reason::MatchesHidden,
        projects == 1 ? tr("1 hidden project matches")
                      : tr("%1 hidden projects match").arg(locale().toString(projects)));
}

void EmptyState::presentNoProjects(const QStringList& folders) {
    present(Reason::NoProjects);
    if (folders.isEmpty())
        return;
    QStringList names;
    QStringList paths;
    for (const QString& folder : folders.first(std::min(folders.size(), mostFolders))) {
        names.append(QDir(folder).dirName());
        paths.append(breakable(QDir::toNativeSeparators(QDir::cleanPath(folder))));
    }
    if (folders.size() > mostFolders) {
        names.append(QStringLiteral("…"));
        paths.append(QStringLiteral("…"));
    }
    setTexts(
        tr("No projects in %1 yet").arg(shortened(names.join(QStringLiteral(", ")))),
        tr("Projects that you save there appear here. Stemhaven watches:") + u'\n' + paths.join(u'\n'),
        tr("Add Folder…"));
}

void EmptyState::setTexts(const QString& title, const QString& help, const QString& action) {
    m_title->setText(title);
    m_help->setText(help);
    m_action->setText(action);
}

void EmptyState::performAction() {
    switch (m_reason) {
    case Reason::NoProjects:
    case Reason::Searching:
        emit addFolderRequested();
        break;
    case Reason::AllHidden:
    case Reason::MatchesHidden:
        emit showHiddenRequested();
        break;
    case Reason::NothingFound:
        emit clearSearchRequested();
        break;
    case Reason::NothingInFilter:
        emit showAllRequested();
        break;
    case Reason::NoColumns:
        emit showColumnRequested();
        break;
    case Reason::Unreadable:
        emit reloadRequested();
        break;
    }
}
