// Registers the data viewers of this layer as object kinds of the scene: how a "Particle_cls"
// and a "VolumeBox_cls" are made, their extra project blocks, and their part in the memory walks
// of the tree. Call after RegisterSceneServices and before the project is read.
#pragma once
void RegisterViewerServices();
