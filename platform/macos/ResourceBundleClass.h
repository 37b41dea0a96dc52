#pragma once

#import <Foundation/Foundation.h>

/// Marks the bundle that carries the application's resources (`bundleForClass:`).
@interface ResourceBundleClass : NSObject
@end
