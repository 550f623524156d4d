#include "Peer.h"

const std::array<Candidate, 8> CANDIDATES{Candidate{OURS, quorIsdbt},
                                          Candidate{OURS_AFTER_CRC_32, quorIsdbtAfterCrc32},
                                          Candidate{"libdvbpsi", libdvbpsi},
                                          Candidate{"libdvbv5", libdvbv5},
                                          Candidate{"GStreamer mpegts", gstreamer},
                                          Candidate{"biTStream", biTStream},
                                          Candidate{"biTStream, CRC_32 of all first", biTStreamCheckedFirst, false},
                                          Candidate{"biTStream, loops walked by hand", biTStreamByHand, false}};
