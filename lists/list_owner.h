#pragma once

#include <QWidget>
#include <memory>

#include "component/public/editing_screen.h"
#include "component/public/lookup_list.h"

namespace orvo::lists {

// What a list window needs of the LookUpList that runs it: the host's handler of its events,
// and editing screens for the start methods its commands call.
class ListOwner {
public:
    virtual ~ListOwner() = default;
    // The handler of the list's events; one that does nothing when the host gave none.
    virtual LookUpListEvents& Events() = 0;
    // An EditingScreen made for one call, owned by the window `owner`.
    virtual std::unique_ptr<EditingScreen> NewEditingScreen(QWidget* owner) = 0;
};

}  // namespace orvo::lists
