#pragma once

#include <QIcon>
#include <QList>
#include <QObject>
#include <QString>

namespace orvo {

// Named pictures that a host hands to the component for its toolbars and trees, kept in the
// order they were added.
class ImageList : public QObject {
    Q_OBJECT
public:
    explicit ImageList(QObject* parent = nullptr);

    // A key added again replaces its picture and keeps its place.
    void Add(const QString& key, const QIcon& icon);
    // A null icon for a key that is not in the list.
    QIcon Icon(const QString& key) const;
    bool Contains(const QString& key) const;
    int Count() const { return static_cast<int>(entries_.size()); }

private:
    struct Entry {
        QString key;
        QIcon icon;
    };
    const Entry* Find(const QString& key) const;

    QList<Entry> entries_;
};

}  // namespace orvo
