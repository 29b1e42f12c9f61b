#ifndef CORE_REWRITING_SHARED_DISK_QUERIES_H
#define CORE_REWRITING_SHARED_DISK_QUERIES_H

// While one stands, all path lists (path_rewriting.h) share what they ask of the disk: the current
// directory once, and each prefix that exists once. Within another it shares what that one has.
struct shared_disk_queries {
    shared_disk_queries();
    ~shared_disk_queries();
    shared_disk_queries(const shared_disk_queries &) = delete;
    shared_disk_queries &operator=(const shared_disk_queries &) = delete;

    // Ends the one that a run which was left on its way has kept standing.
    static void forget();

    const bool is_outermost;
};

#endif
