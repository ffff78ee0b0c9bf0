// The data holder of a graph: the identifier under which hosts exchange its data, and how data are split when
// they are exchanged as text.
#pragma once

#include "support/export.h"

#include <QObject>
#include <string>

namespace lumoplot {

class XYGRAPH_EXPORT TxyHolder : public QObject {
    Q_OBJECT

public:
    explicit TxyHolder(QObject* owner = nullptr) : QObject(owner) {}

    const std::string& ID() const { return m_id; }
    const std::string& TextSeparators() const { return m_textSeparators; }
    const std::string& TextMarkers() const { return m_textMarkers; }

    // Each stores a changed value and emits OnChange.
    void SetID(const std::string& value) { Store(m_id, value); }
    void SetTextSeparators(const std::string& value) { Store(m_textSeparators, value); }
    void SetTextMarkers(const std::string& value) { Store(m_textMarkers, value); }

Q_SIGNALS:
    void OnChange();

private:
    void Store(std::string& field, const std::string& value) {
        if (field == value) return;
        field = value;
        Q_EMIT OnChange();
    }

    std::string m_id;
    std::string m_textSeparators = "\t,";
    std::string m_textMarkers = "'\"";
};

} // namespace lumoplot
