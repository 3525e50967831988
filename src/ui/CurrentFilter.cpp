#include "ui/CurrentFilter.h"

#include "database/QueryBuilder.h"

using Stemhaven::QueryBuilder;

namespace {

using Setter = void (QueryBuilder::*)(qint64);

/// Null for a type that is no filter of the builder.
Setter setterFor(FilterType type) {
    switch (type) {
    case FilterType::COLLECTIONS:
        return &QueryBuilder::setCollectionID;
    case FilterType::GENRES:
        return &QueryBuilder::setGenreID;
    case FilterType::TAGS:
        return &QueryBuilder::setTagID;
    case FilterType::ARRANGEMENT_STATUS:
        return &QueryBuilder::setArrangementStatusID;
    case FilterType::LYRICS_STATUS:
        return &QueryBuilder::setLyricsStatusID;
    case FilterType::RECORDING_STATUS:
        return &QueryBuilder::setRecordingStatusID;
    case FilterType::MIX_MASTER_STATUS:
        return &QueryBuilder::setMixMasterStatusID;
    default:
        return nullptr;
    }
}

} // namespace

void CurrentFilter::set(FilterType type, qint64 id, const QString& name) {
    const Setter setter = setterFor(type);
    if (!setter) {
        clear();
        return;
    }
    (m_builder.*setter)(id);
    m_type = type;
    m_id = id;
    m_name = name;
}

void CurrentFilter::clear() {
    m_builder.clearFilter();
    m_type = FilterType::ALL;
    m_id = -1;
    m_name.clear();
}

QString CurrentFilter::description(const QString& term) const {
    const QString plain = plainDescription();
    // Not by placeholders: names and terms may look like one.
    return term.isEmpty() ? plain : plain + tr(" matching '%1'").arg(term);
}

QString CurrentFilter::plainDescription() const {
    switch (m_type) {
    case FilterType::COLLECTIONS:
        return tr("Collection '%1'").arg(m_name);
    case FilterType::GENRES:
        return tr("Genre '%1'").arg(m_name);
    case FilterType::TAGS:
        return tr("Tag '%1'").arg(m_name);
    case FilterType::ARRANGEMENT_STATUS:
        return tr("Arrangement Status '%1'").arg(m_name);
    case FilterType::LYRICS_STATUS:
        return tr("Lyrics Status '%1'").arg(m_name);
    case FilterType::RECORDING_STATUS:
        return tr("Recording Status '%1'").arg(m_name);
    case FilterType::MIX_MASTER_STATUS:
        return tr("Mix/Master Status '%1'").arg(m_name);
    default:
        return tr("All projects");
    }
}
