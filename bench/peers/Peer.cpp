#include "Peer.h"

const std::array<Candidate, 7> CANDIDATES{Candidate{OURS, quorIsdbt},
                                          Candidate{OURS_AFTER_CRC_32, quorIsdbtAfterCrc32},
                                          Candidate{"libdvbpsi", libdvbpsi},
                                          Candidate{"libdvbv5", libdvbv5},
                                          Candidate{"GStreamer mpegts", gstreamer},
                                          Candidate{"biTStream", biTStream},
                                          Candidate{"biTStream, loops walked by hand", biTStreamByHand, false}};
