#include "VantixInAppMessage/Manager/VantixInAppDBDefaults.h"

#include "Platform/Values/FatalError.h"
#include "VantixCore/VantixDBFactory.h"

namespace vantix {

std::shared_ptr<BaseRepository> VantixInAppDBDefaults::repository(Env environment) {
    auto model = defaultMOM();
    if (!model) fatalError("The object model InAppMessageModel.momd is missing");
    return VantixDBFactory::getRepositoryFor(defaultEnityName, defaultStoreName, *model, environment, true, {},
                                             defaultPersistentStoreTimeOut);
}

}  // namespace vantix
