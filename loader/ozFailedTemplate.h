// What a host of the loader does when a template fails to load while it keeps its code object:
// the templates read before stay, but nothing of the failed one may change how the next
// template is read. The key-name and argument stacks need nothing (every load starts them
// empty); the [strings] table, which all templates of the module share, keeps what a template
// filed, so the host notes its size before the load and cuts it back after a failure.
#pragma once

#include <cstddef>

// How many [strings] entries the templates read so far have filed.
std::size_t ozTemplateStringCount();
// Forgets the [strings] entries filed after the first count.
void ozForgetTemplateStringsAfter(std::size_t count);
