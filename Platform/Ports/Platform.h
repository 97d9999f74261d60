#pragma once

#include "Platform/Values/Export.h"

#include <memory>

namespace vantix {

class Application;
class Disk;
class Dispatcher;
class FontCatalogue;
class ImageDecoder;
class NotificationCenter;
class TextMeasurer;

/// The machine as this system sees it. Null is only what a program never uses; the ports belong to the platform and to
/// whoever asked for them. A program installs one, once, at start, before it uses anything else.
struct VANTIX_EXPORT Platform {
    std::shared_ptr<Dispatcher> dispatcher;
    std::shared_ptr<NotificationCenter> notificationCenter;
    std::shared_ptr<Application> application;
    std::shared_ptr<FontCatalogue> fontCatalogue;
    std::shared_ptr<TextMeasurer> textMeasurer;
    std::shared_ptr<ImageDecoder> imageDecoder;
    /// Null: the disk of the machine (FileDisk).
    std::shared_ptr<Disk> disk = {};

    /// Main thread. A later call replaces the earlier platform, which lives on for whoever still holds it.
    static void install(Platform platform);
    /// Lets go of the platform, once everything that could still ask for it has ended. Main thread.
    static void uninstall();
    /// The platform that is installed. Any thread. Asking before there is one is a programming
    /// error and stops the process.
    static std::shared_ptr<const Platform> current();
};

}  // namespace vantix
