import { connection } from "../connection/Connection";
import { fill, text } from "../text/Text";
import { tellDone } from "./Notices";

connection.on("url", ({ url }) => tellDone(fill(text.value.live.addressOpened, url)));
connection.onConnect(() => connection.request("watch", { topic: "urls" }).then(() => undefined));
