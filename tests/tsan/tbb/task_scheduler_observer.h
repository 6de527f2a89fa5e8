#pragma once
#include <tbb/task_arena.h>
