// Registers the filter chain: the service of its place in the table, the receiver of its lines,
// the chain that the frame passes find, and the head of filter tags for the attributes.
#pragma once
void RegisterFilterServices();
