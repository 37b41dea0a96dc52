#pragma once

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

namespace keyrow::macos {

/// Has a method do what a block does as long as this object lives. The block takes the object, or
/// for a class method the class, and then what the method takes.
class ReplacedMethod {
 public:
  ReplacedMethod(Method method, id block)
      : method_{method},
        original_{method_setImplementation(method, imp_implementationWithBlock(block))} {}
  ReplacedMethod(const ReplacedMethod&) = delete;
  ReplacedMethod& operator=(const ReplacedMethod&) = delete;
  ~ReplacedMethod() { imp_removeBlock(method_setImplementation(method_, original_)); }

 private:
  const Method method_;
  const IMP original_;
};

}  // namespace keyrow::macos
