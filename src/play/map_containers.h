// The containers of the current map, which are there from StartMap to StopMap: ground, world, models,
// entities and particles.
#pragma once

class Backmap;
class Entityes;
class Globalp;
class Objects;
class QEV_PEngine;

struct MapContainers {
    Backmap& ground;
    Globalp& world;
    Objects& models;
    Entityes& entities;
    QEV_PEngine& particles;
};

// Releases and frees those that are there, each told in the log.
void RemoveContainers();
// Makes those that are not there, empty, each told in the log. All of them, valid until they are removed.
MapContainers CreateContainers();
