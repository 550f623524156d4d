// aribts.js FILE SECONDS: how many times a second aribts decodes the section in the file, descriptors included.
const fs = require("fs");
const { tsSectionList, tsDescriptorList, TsDescriptors } = require("aribts");

const SECTIONS = {
  0x00: tsSectionList.TsSectionProgramAssociation,
  0x02: tsSectionList.TsSectionProgramMap,
  0x40: tsSectionList.TsSectionNetworkInformation,
  0x42: tsSectionList.TsSectionServiceDescription,
  0x73: tsSectionList.TsSectionTimeOffset,
  0xc3: tsSectionList.TsSectionSoftwareDownloadTrigger,
};

// Descriptors are decoded when they are asked for; those that it does not know are bytes.
function decodeAll(value) {
  if (value instanceof TsDescriptors) {
    for (const descriptor of value.decode()) {
      if (descriptor.constructor !== tsDescriptorList.TsDescriptorBase) decodeAll(descriptor.decode());
    }
  } else if (value && typeof value === "object" && !Buffer.isBuffer(value)) {
    for (const each of Object.values(value)) decodeAll(each);
  }
}

const bytes = fs.readFileSync(process.argv[2]);
const seconds = Number(process.argv[3]);
const Section = SECTIONS[bytes[0]];

function rate() {
  let calls = 0;
  const begin = process.hrtime.bigint();
  let passed = 0;
  while (passed < seconds) {
    for (let i = 0; i < 100; ++i) decodeAll(new Section(bytes, 0).decode());
    calls += 100;
    passed = Number(process.hrtime.bigint() - begin) / 1e9;
  }
  return calls / passed;
}

rate(); // until it is compiled
console.log(Math.round(rate()).toLocaleString("en"));
