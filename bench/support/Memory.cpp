#include "bench/support/Memory.h"

#include <fstream>

#include <malloc.h>
#include <unistd.h>

double AllocatedBytes()
{
    const struct mallinfo2 use = mallinfo2();
    return static_cast<double>(use.uordblks + use.hblkhd);
}

double ResidentBytes()
{
    std::ifstream pages("/proc/self/statm");
    double all = 0;
    double resident = 0;
    pages >> all >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}
