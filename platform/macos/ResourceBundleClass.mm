#include "platform/macos/ResourceBundleClass.h"

@implementation ResourceBundleClass
@end
