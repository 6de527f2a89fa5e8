#pragma once
#include <tbb/parallel_reduce.h>
