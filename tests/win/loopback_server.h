#pragma once
// A small HTTP/1.0 file server inside the test program, on the loopback port
// the test build of heralder.exe asks (127.0.0.1:47632): no server object is
// "the server is down". It counts requests, answers a request naming a file's
// ETag with "304 Not Modified", and can refuse the first few connections, as a
// network not up yet at logon would.
#include <atomic>
#include <string>
#include <thread>

class LoopbackServer {
  public:
    // Serves the files under root (a Windows path) as "/update/..." (so
    // examples/ is served as the publisher's "/update/" folder). With root ""
    // it accepts nothing: the system completes each connection and the request
    // waits for a reply that never comes.
    explicit LoopbackServer(std::string root, int refuseFirst = 0);
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    bool listening() const { return socket_ != ~0ull; }
    int requests() const { return requests_; }
    int notModified() const { return notModified_; }  // 304 answers

  private:
    void serve();

    std::string root_;
    std::atomic<int> refuse_;
    std::atomic<int> requests_{0};
    std::atomic<int> notModified_{0};
    std::atomic<bool> stopping_{false};
    unsigned long long socket_ = ~0ull;
    std::thread thread_;
};

inline constexpr int kAppServerPort = 47632;
