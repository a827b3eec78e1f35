#pragma once

namespace orvo {

// The two events a printing window raises through the instance that started it, on either
// public class. The default handlers do nothing.
class PrintEvents {
public:
    virtual ~PrintEvents() = default;
    // Set bCancel to true to cancel the print.
    virtual void BeforePrint(bool& bCancel) {}
    virtual void AfterPrint() {}
};

}  // namespace orvo
