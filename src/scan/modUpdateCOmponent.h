#pragma once
#include <QString>

#include "platform/Platform.h"
#include "platform/net/InetControl.h"

namespace scan {

// The query value as the update server reads it: 0-9, A-Z and a-z stay, every other
// character becomes "%" and the two upper-case hex digits of its byte in the machine's
// single-byte code page.
QString EncodeQueryValue(const QString& text, const platform::CodePage& codePage);

// The lookup component: one GET to the update server per program, its reply packed into one
// text (PackUpdateRecord). It has an access key of its own, compared at every call as a guard
// against a stray caller, and a busy flag against a second lookup entered through the event
// loop while the first waits.
class modUpdateCOmponent {
public:
    static constexpr const char* kAccessKey = "Qz7tLp2Xw94bKd8";

    modUpdateCOmponent(platform::Platform& platform, platform::net::InetControl& inet);

    bool logFlag() const { return logFlag_; }
    void setLogFlag(bool on) { logFlag_ = on; }
    bool testFlag() const { return testFlag_; }
    void setTestFlag(bool on) { testFlag_ = on; }
    const QString& accessKey() const { return accessKey_; }
    void setAccessKey(const QString& key) { accessKey_ = key; }
    // The common application data folder, without a trailing "\"; UCLog.txt lies below it.
    const QString& dataFolder() const { return dataFolder_; }
    void setDataFolder(const QString& folder) { dataFolder_ = folder; }
    // The server's address, "http://host:port", without a trailing "/".
    const QString& serverBase() const { return serverBase_; }
    void setServerBase(const QString& base) { serverBase_ = base; }
    bool busy() const { return busy_; }

    // app, pub, fvr, pvr, exe and win come encoded with EncodeQueryValue, uid and cuv as they
    // are. The packed record; "ERR_CODE:X0" while another lookup runs.
    QString RetrieveUpdate(const QString& app, const QString& pub, const QString& fvr,
                           const QString& pvr, const QString& exe, bool bet, const QString& uid,
                           const QString& cuv, const QString& win);
    QString UpdateURL(const QString& app, const QString& pub, const QString& fvr,
                      const QString& pvr, const QString& exe, bool bet, const QString& uid,
                      const QString& cuv, const QString& win) const;

private:
    void log(const QString& text);

    platform::Platform& platform_;
    platform::net::InetControl& inet_;
    bool logFlag_ = false;
    bool testFlag_ = false;
    QString accessKey_;
    QString dataFolder_;
    QString serverBase_;
    bool busy_ = false;
};

}  // namespace scan
