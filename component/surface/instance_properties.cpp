#include "component/surface/instance_properties.h"

#include "component/public/component_error.h"
#include "platform/image_list.h"

namespace orvo::component {

QObject* CheckedImaList(QObject* candidate) {
    if (candidate && !qobject_cast<ImageList*>(candidate)) {
        throw ComponentError(QStringLiteral(
            "Incorrect Object Supplied. The ImaList property of the Editor object expects a "
            "reference to an MSComctlLib.ImageList."));
    }
    return candidate;
}

}  // namespace orvo::component
