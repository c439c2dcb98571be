#pragma once

namespace fw {

// Style values of messages and the answers they return, as the suite's log service takes them:
// buttons + icon + default button + modality, added together (48 = OK with the exclamation icon,
// 4370 = Abort/Retry/Ignore, critical, second button default, system-modal).
namespace MessageStyle {
enum : int {
    OkOnly = 0,
    OkCancel = 1,
    AbortRetryIgnore = 2,
    YesNoCancel = 3,
    YesNo = 4,
    RetryCancel = 5,
    Critical = 16,
    Question = 32,
    Exclamation = 48,
    Information = 64,
    DefaultButton2 = 256,
    DefaultButton3 = 512,
    SystemModal = 4096,

    Warning = OkOnly + Exclamation,                                           // 48
    Notice = OkOnly + Information,                                            // 64
    YesNoWarning = YesNo + Exclamation + DefaultButton2,                      // 308
    YesNoQuestion = YesNo + Question + DefaultButton2,                        // 292
    ErrorDialog = AbortRetryIgnore + Critical + DefaultButton2 + SystemModal, // 4370
};
} // namespace MessageStyle

namespace Answer {
enum : int { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };
} // namespace Answer

} // namespace fw
