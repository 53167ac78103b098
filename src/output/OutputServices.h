// Registers the services of the output layer: the toolkit's image handlers of the written
// formats, the image output's settings (a receiver of project lines), the ring of image writers
// and the PNG reader; and installs the frame's output (record
// buffers, saving, accumulation) under the frame passes, with the deleters of the sampling
// controllers' buffers.
#pragma once
void RegisterOutputServices();
