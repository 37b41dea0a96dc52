#include "platform/macos/tests/PaneImage.h"

#include <algorithm>
#include <cstdlib>
#include <span>

#include "platform/macos/Conversions.h"

namespace keyrow::macos {

namespace {

/// Whether anything but transparency is there.
bool isDrawn(NSBitmapImageRep* image) {
  const std::span bytes{image.bitmapData,
                        static_cast<std::size_t>(image.bytesPerRow * image.pixelsHigh)};
  return std::ranges::any_of(bytes, [](unsigned char byte) { return byte != 0; });
}

/// The same on the colour of a window, which a view leaves to the window.
NSBitmapImageRep* onWindowBackground(NSBitmapImageRep* image, NSAppearance* appearance) {
  NSBitmapImageRep* const result =
      [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                              pixelsWide:image.pixelsWide
                                              pixelsHigh:image.pixelsHigh
                                           bitsPerSample:8
                                         samplesPerPixel:4
                                                hasAlpha:YES
                                                isPlanar:NO
                                          colorSpaceName:NSCalibratedRGBColorSpace
                                             bytesPerRow:0
                                            bitsPerPixel:0];
  result.size = image.size;
  const NSRect bounds = NSMakeRect(0, 0, image.size.width, image.size.height);
  [NSGraphicsContext saveGraphicsState];
  NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithBitmapImageRep:result];
  [appearance performAsCurrentDrawingAppearance:^{
    [NSColor.windowBackgroundColor setFill];
    NSRectFill(bounds);
  }];
  [image drawInRect:bounds
            fromRect:NSZeroRect
           operation:NSCompositingOperationSourceOver
            fraction:1
      respectFlipped:NO
               hints:nil];
  [NSGraphicsContext restoreGraphicsState];
  return result;
}

}  // namespace

bool writeImage(NSView* view, const std::string& name) {
  NSAppearance* const light = [NSAppearance appearanceNamed:NSAppearanceNameAqua];
  view.appearance = light;
  NSBitmapImageRep* const image = [view bitmapImageRepForCachingDisplayInRect:view.bounds];
  if (!image) return false;
  [view cacheDisplayInRect:view.bounds toBitmapImageRep:image];
  if (!isDrawn(image)) return false;

  const char* const folder = std::getenv("KEYROW_TEST_RESULTS");
  NSString* const path = nsString(folder ? folder : ".");
  [NSFileManager.defaultManager createDirectoryAtPath:path
                          withIntermediateDirectories:YES
                                           attributes:nil
                                                error:nil];
  NSData* const png =
      [onWindowBackground(image, light) representationUsingType:NSBitmapImageFileTypePNG
                                                     properties:@{}];
  return [png writeToFile:[path stringByAppendingPathComponent:nsString(name + ".png")]
               atomically:YES];
}

}  // namespace keyrow::macos
