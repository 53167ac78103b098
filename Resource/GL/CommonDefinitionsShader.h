// Shared by every vertex shader that holds the mark.
#define MAX_LIGHT_RECIEVE 7
