#pragma once

#include <memory>

namespace vantix {

class Application;
class Dispatcher;
class FontCatalogue;
class ImageDecoder;
class NotificationCenter;
class TextMeasurer;

/// The machine as this system sees it. A program installs one, once, at start, before it uses anything else.
struct Platform {
    std::shared_ptr<Dispatcher> dispatcher;
    std::shared_ptr<NotificationCenter> notificationCenter;
    std::shared_ptr<Application> application;
    std::shared_ptr<FontCatalogue> fontCatalogue;
    std::shared_ptr<TextMeasurer> textMeasurer;
    std::shared_ptr<ImageDecoder> imageDecoder;

    /// Main thread, before any other thread runs. A later call replaces the earlier platform.
    static void install(Platform platform);
    /// Reading ports that were not installed is a programming error and stops the process.
    static const Platform& current();
};

}  // namespace vantix
