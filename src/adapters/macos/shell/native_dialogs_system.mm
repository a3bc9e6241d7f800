#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

#include "adapters/macos/cocoa/foundation_text.hpp"
#include "adapters/macos/shell/native_dialogs.hpp"

namespace velotap {
namespace {

NSBitmapImageRep* squareBitmap(int pixels) {
  return [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                 pixelsWide:pixels
                                                 pixelsHigh:pixels
                                              bitsPerSample:8
                                            samplesPerPixel:4
                                                   hasAlpha:YES
                                                   isPlanar:NO
                                             colorSpaceName:NSDeviceRGBColorSpace
                                                bytesPerRow:0
                                               bitsPerPixel:0];
}

std::vector<std::byte> bytesOf(NSData* data) {
  const auto* first = static_cast<const std::byte*>(data.bytes);
  return first == nullptr ? std::vector<std::byte>()
                          : std::vector<std::byte>(first, first + data.length);
}

class SystemDialogs final : public NativeDialogs {
 public:
  std::vector<std::string> chooseApplications(const std::string& message) override {
    NSOpenPanel* panel = [NSOpenPanel openPanel];
    panel.directoryURL = [NSURL fileURLWithPath:@"/Applications"];
    panel.allowsMultipleSelection = YES;
    panel.allowedContentTypes = @[ UTTypeApplicationBundle ];
    panel.message = foundationText(message);
    std::vector<std::string> paths;
    if ([panel runModal] != NSModalResponseOK) return paths;
    for (NSURL* chosen in panel.URLs) {
      if (auto path = textOf(chosen.path)) paths.push_back(std::move(*path));
    }
    return paths;
  }

  std::optional<std::string> chooseSaveLocation(const std::string& name) override {
    NSSavePanel* panel = [NSSavePanel savePanel];
    panel.canCreateDirectories = YES;
    panel.nameFieldStringValue = foundationText(name);
    if ([panel runModal] != NSModalResponseOK) return std::nullopt;
    return textOf(panel.URL.path);
  }

  bool writeFile(const std::string& path, const std::string& bytes) override {
    NSString* place = foundationText(path);
    NSData* data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
    return place != nil && [data writeToFile:place atomically:YES];
  }

  bool copyText(const std::string& text) override {
    NSString* copied = foundationText(text);
    if (copied == nil) return false;
    NSPasteboard* pasteboard = NSPasteboard.generalPasteboard;
    [pasteboard clearContents];
    return [pasteboard setString:copied forType:NSPasteboardTypeString];
  }

  std::vector<std::byte> icon(const std::string& path, int pixels) override {
    NSString* file = foundationText(path);
    NSBitmapImageRep* bitmap = squareBitmap(pixels);
    if (file == nil || bitmap == nil) return {};
    NSImage* image = [NSWorkspace.sharedWorkspace iconForFile:file];
    [NSGraphicsContext saveGraphicsState];
    NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap];
    const auto side = static_cast<CGFloat>(pixels);
    [image drawInRect:NSRect{{0, 0}, {side, side}}];
    [NSGraphicsContext restoreGraphicsState];
    return bytesOf([bitmap representationUsingType:NSBitmapImageFileTypePNG properties:@{}]);
  }
};

}  // namespace

std::unique_ptr<NativeDialogs> NativeDialogs::system() {
  return std::make_unique<SystemDialogs>();
}

}  // namespace velotap
