#include "platform/win32/FolderWatch.h"

#include "platform/win32/WindowsApi.h"

#include "platform/win32/StopEvent.h"

namespace platform::win32 {

namespace {

constexpr DWORD kChanges = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME |
                           FILE_NOTIFY_CHANGE_ATTRIBUTES | FILE_NOTIFY_CHANGE_SIZE |
                           FILE_NOTIFY_CHANGE_LAST_WRITE;

class FolderWatch final : public ChangeNotification {
public:
    explicit FolderWatch(HANDLE notification) : notification_(notification) {}
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch() override { ::FindCloseChangeNotification(notification_); }

    // One write makes several notifications (name, size, time); all that are already
    // there belong to the change this call reports.
    bool wait(int timeoutMs) override {
        const HANDLE handles[] = {notification_, stopEvent()};
        const DWORD woken = ::WaitForMultipleObjects(2, handles, FALSE,
                                                     timeoutMs < 0 ? INFINITE : DWORD(timeoutMs));
        if (woken != WAIT_OBJECT_0) {
            return false;
        }
        do {
            if (!::FindNextChangeNotification(notification_)) {
                break;
            }
        } while (::WaitForSingleObject(notification_, 0) == WAIT_OBJECT_0);
        return true;
    }

private:
    HANDLE notification_;
};

}  // namespace

std::unique_ptr<ChangeNotification> watchFolderChanges(const std::string& folder) {
    const DWORD attributes = ::GetFileAttributesA(folder.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        return nullptr;
    }
    const HANDLE notification = ::FindFirstChangeNotificationA(folder.c_str(), FALSE, kChanges);
    if (notification == INVALID_HANDLE_VALUE) {
        return nullptr;
    }
    return std::make_unique<FolderWatch>(notification);
}

}  // namespace platform::win32
