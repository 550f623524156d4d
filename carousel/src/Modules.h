#pragma once

#include "dsmcc/Carousel.h"

namespace dsmcc {

/// Keeps a refusal with the others, once, and no more than a person reads.
void note(std::vector<Refusal>& refusals, const Refusal& refusal);

/// It came once more.
void count(Repetition& repetition, double seconds);

/// A module as a DII announces it, without blocks.
Module announced(const DownloadInfoIndication& dii, const ModuleInfo& info, std::size_t memoryLimit);

/// Whether blocks of an announced module belong to this announcement, too.
bool sameModule(const Module& module, const Module& announcement);

/// Whether its blocks are kept.
bool collects(const Module& module);

/// What keeps a block from being one of an announced module.
std::optional<Refusal> mismatch(const Module& module, std::uint16_t number, std::size_t size, std::size_t at);

/// The bytes of a block that is there; none when it is not.
std::optional<ByteView> blockOf(const Module& module, std::uint16_t number);

/// It came as one more of the blocks.
void add(Module& module, std::uint16_t number, ByteView data, double seconds);

/// Memory that one more block takes, and all that a module holds.
std::size_t costOfBlock(std::size_t size);
std::size_t costOf(const Module& module);

/// Joins the blocks of a module of which none is missing.
void join(Module& module);

} // namespace dsmcc
