#include "platform/image_list.h"

namespace orvo {

ImageList::ImageList(QObject* parent) : QObject(parent) {}

void ImageList::Add(const QString& key, const QIcon& icon) {
    for (Entry& entry : entries_) {
        if (entry.key == key) {
            entry.icon = icon;
            return;
        }
    }
    entries_.append({key, icon});
}

QIcon ImageList::Icon(const QString& key) const {
    const Entry* entry = Find(key);
    return entry ? entry->icon : QIcon();
}

bool ImageList::Contains(const QString& key) const {
    return Find(key) != nullptr;
}

const ImageList::Entry* ImageList::Find(const QString& key) const {
    for (const Entry& entry : entries_) {
        if (entry.key == key)
            return &entry;
    }
    return nullptr;
}

}  // namespace orvo
